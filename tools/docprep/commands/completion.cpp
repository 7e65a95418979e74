#include "commands/completion.h"

#include <CLI/CLI.hpp>
#include <utility>

#include "cli/options.h"
#include "commands/help.h"

namespace docprep {

namespace {

/// What stands after an option, or by its place.
enum class Value { kNone, kWords, kList, kFile, kFolder, kOther };

Value value_of(const OptionText& option) {
    if (option.value.empty()) return Value::kNone;
    if (!option.choices.empty()) return option.value == "LIST" ? Value::kList : Value::kWords;
    if (option.value == "FOLDER") return Value::kFolder;
    if (option.value == "FILE" || !option.positional.empty()) return Value::kFile;
    return Value::kOther;
}

std::string joined(const std::vector<std::string>& words, const std::string& between = " ") {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

/// The text with a backslash before each of some characters, and quotes as a single-quoted word has them.
std::string in_quotes(const std::string& text, const std::string& special = "") {
    std::string result;
    for (const char c : text) {
        if (c == '\'') {
            result += "'\\''";
            continue;
        }
        if (special.find(c) != std::string::npos) result += '\\';
        result += c == '\n' ? ' ' : c;
    }
    return result;
}

/// Words that stand by their place in a command: below it, its choices, or those that help knows.
std::vector<std::string> words_of(const CommandText& command, const CommandText& program) {
    std::vector<std::string> words;
    if (command.name == "help") return help_words(program);
    for (const CommandText& below : command.commands) words.push_back(below.name);
    for (const OptionText& option : command.options)
        if (!option.positional.empty())
            words.insert(words.end(), option.choices.begin(), option.choices.end());
    return words;
}

bool takes_files(const CommandText& command) {
    for (const OptionText& option : command.options)
        if (!option.positional.empty() && value_of(option) == Value::kFile) return command.name != "help";
    return false;
}

/// "", "warp", "op", "op otsu" ... with what they stand for.
using Named = std::vector<std::pair<std::string, const CommandText*>>;

void collect(const std::string& above, const CommandText& command, Named& named) {
    const std::string name = above.empty() ? command.name : above + " " + command.name;
    named.emplace_back(name, &command);
    for (const CommandText& below : command.commands) collect(name, below, named);
}

Named all_commands(const CommandText& program) {
    Named named;
    collect("", program, named);
    return named;
}

// ---- bash ----

std::string bash_value(const OptionText& option) {
    switch (value_of(option)) {
        case Value::kWords:
            return "words='" + joined(option.choices) + "'";
        case Value::kList:
            return "words='" + joined(option.choices) + "' kind=list";
        case Value::kFile:
            return "kind=files";
        case Value::kFolder:
            return "kind=folders";
        default:
            return "kind=nothing";
    }
}

/// The cases of options that take a value.
std::string bash_values(const std::string& name, const CommandText& command) {
    std::string text;
    for (const OptionText& option : command.options) {
        if (option.names.empty() || value_of(option) == Value::kNone) continue;
        std::vector<std::string> patterns;
        for (const std::string& flag : option.names)
            patterns.push_back(std::string("'").append(name).append(":").append(flag).append("'"));
        text += "        " + joined(patterns, " | ") + ") " + bash_value(option) + " ;;\n";
    }
    return text;
}

std::string bash_command(const std::string& name, const CommandText& command, const CommandText& program) {
    std::vector<std::string> flags;
    for (const OptionText& option : command.options)
        flags.insert(flags.end(), option.names.begin(), option.names.end());
    std::string text = "        '" + name + "') flags='" + joined(flags) + "'";
    const std::vector<std::string> words = words_of(command, program);
    if (!words.empty()) text += " words='" + joined(words) + "'";
    if (takes_files(command)) text += " kind=files";
    return text + " ;;\n";
}

std::string bash_script(const CommandText& program) {
    const Named commands = all_commands(program);
    std::string names, cases, values;
    for (const auto& [name, command] : commands) {
        if (!name.empty()) names += (names.empty() ? "'" : " | '") + name + "'";
        cases += bash_command(name, *command, program);
        values += bash_values(name, *command);
    }
    return "# bash completion for docprep; made by docprep completion bash\n"
           "_docprep() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}\n"
           "    local command= flags= words= kind= depth=1 tried\n"
           "    COMPREPLY=()\n"
           "    # bash makes words of their own of the sign in --option=value.\n"
           "    if [[ $word == = ]]; then word=\n"
           "    elif [[ $before == = ]]; then before=${COMP_WORDS[COMP_CWORD - 2]}; fi\n"
           "    while ((depth < COMP_CWORD)); do\n"
           "        tried=${command:+$command }${COMP_WORDS[depth]}\n"
           "        case $tried in\n"
           "        " +
           names +
           ") command=$tried depth=$((depth + 1)) ;;\n"
           "        *) break ;;\n"
           "        esac\n"
           "    done\n"
           "    case $command:$before in\n" +
           values +
           "        *)\n"
           "        case $command in\n" +
           cases +
           "        esac\n"
           "        # Names of commands and operations come first.\n"
           "        ((depth == COMP_CWORD)) || words=\n"
           "        if [[ $word == -* ]]; then words=\"$flags $words\" kind=; fi ;;\n"
           "    esac\n"
           "    local head= IFS=$' \\t\\n'\n"
           "    if [[ $kind == list ]]; then\n"
           "        [[ $word == *,* ]] && head=${word%,*},\n"
           "        compopt -o nospace 2>/dev/null\n"
           "    fi\n"
           "    COMPREPLY=($(compgen -P \"$head\" -W \"$words\" -- \"${word#\"$head\"}\"))\n"
           "    IFS=$'\\n'\n"
           "    if [[ $kind == files ]]; then COMPREPLY+=($(compgen -f -- \"$word\"))\n"
           "    elif [[ $kind == folders ]]; then COMPREPLY+=($(compgen -d -- \"$word\")); fi\n"
           "    [[ $kind == files || $kind == folders ]] && compopt -o filenames 2>/dev/null\n"
           "    return 0\n"
           "}\n"
           "complete -F _docprep docprep\n";
}

// ---- zsh ----

std::string zsh_value(const OptionText& option) {
    switch (value_of(option)) {
        case Value::kWords:
            return "(" + joined(option.choices) + ")";
        case Value::kList:
            return "_values -s , " + option.value + " " + joined(option.choices);
        case Value::kFile:
            return "_files";
        case Value::kFolder:
            return "_files -/";
        default:
            return "";
    }
}

/// An option of _arguments: its other names rule it out, too.
std::string zsh_option(const OptionText& option) {
    std::string text;
    for (const std::string& name : option.names) {
        text += " \\\n            '(" + joined(option.names) + ")" + name;
        if (!option.value.empty()) text += name[1] == '-' ? "=" : "+";
        text += "[" + in_quotes(option.description, "[]:\\") + "]";
        if (!option.value.empty()) text += ":" + in_quotes(option.value, ":") + ":" + zsh_value(option);
        text += "'";
    }
    return text;
}

std::string zsh_command(const std::string& name, const CommandText& command, const CommandText& program) {
    std::string text = "        '" + name + "')\n        _arguments";
    for (const OptionText& option : command.options) text += zsh_option(option);
    const std::vector<std::string> words = words_of(command, program);
    if (!words.empty()) text += " \\\n            '1:name:(" + joined(words) + ")'";
    if (takes_files(command)) text += " \\\n            '*:file:_files'";
    return text + " ;;\n";
}

std::string zsh_script(const CommandText& program) {
    std::string names, cases;
    for (const auto& [name, command] : all_commands(program)) {
        if (!name.empty()) names += (names.empty() ? "'" : " | '") + name + "'";
        cases += zsh_command(name, *command, program);
    }
    std::vector<std::string> first;
    for (const CommandText& command : program.commands) first.push_back(command.name);
    return "#compdef docprep\n"
           "# made by docprep completion zsh\n"
           "_docprep() {\n"
           "    local command= tried\n"
           "    if ((CURRENT == 2)) && [[ $words[2] != -* ]]; then\n"
           "        _alternative 'commands:command:(" +
           joined(first) +
           ")' 'files:file:_files'\n"
           "        return\n"
           "    fi\n"
           "    # A command's name is dropped, so that its arguments are counted from 1.\n"
           "    while ((CURRENT > 2)); do\n"
           "        tried=${command:+$command }${words[2]}\n"
           "        case $tried in\n"
           "        " +
           names +
           ") command=$tried; shift words; ((CURRENT--)) ;;\n"
           "        *) break ;;\n"
           "        esac\n"
           "    done\n"
           "    case $command in\n" +
           cases +
           "    esac\n"
           "}\n"
           "_docprep \"$@\"\n";
}

// ---- fish ----

std::string fish_quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        if (c == '\'' || c == '\\') result += '\\';
        result += c == '\n' ? ' ' : c;
    }
    return result + "'";
}

std::string fish_option(const std::string& condition, const OptionText& option) {
    if (option.names.empty()) return "";
    std::string text = "complete -c docprep" + condition;
    for (const std::string& name : option.names)
        text += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
    switch (value_of(option)) {
        case Value::kNone:
            break;
        case Value::kFile:
            text += " -r -F";
            break;
        case Value::kFolder:
            text += " -x -a '(__fish_complete_directories)'";
            break;
        case Value::kList:
            text += " -x -a '(__fish_append , " + joined(option.choices) + ")'";
            break;
        default:
            text += " -x -a '" + joined(option.choices) + "'";
    }
    return text + " -d " + fish_quoted(option.description) + "\n";
}

std::string fish_command(const std::string& name, const CommandText& command, const CommandText& program) {
    const std::string quoted_name = name.empty() ? "" : " " + fish_quoted(name);
    const std::string condition = " -n \"__docprep_in" + quoted_name + "\"";
    std::string text;
    for (const OptionText& option : command.options) text += fish_option(condition, option);
    if (command.name == "help" || command.commands.empty()) {
        const std::vector<std::string> words = words_of(command, program);
        const std::string first = " -n \"__docprep_first" + quoted_name + "\"";
        if (!words.empty()) text += "complete -c docprep" + first + " -f -a '" + joined(words) + "'\n";
    }
    for (const CommandText& below : command.commands)
        text += "complete -c docprep -n \"__docprep_first" + quoted_name + "\" -a " + below.name + " -d " +
                fish_quoted(below.description) + "\n";
    if (!takes_files(command)) text += "complete -c docprep" + condition + " -f\n";
    return text;
}

std::string fish_script(const CommandText& program) {
    std::string names, commands;
    for (const auto& [name, command] : all_commands(program)) {
        if (!name.empty()) names += " " + fish_quoted(name);
        commands += fish_command(name, *command, program);
    }
    return "# fish completion for docprep; made by docprep completion fish\n"
           "# The command that the words before the cursor name, and how many they are beyond it.\n"
           "function __docprep_command\n"
           "    set -l words (commandline -opc)\n"
           "    set -e words[1]\n"
           "    set -l found\n"
           "    while set -q words[1]\n"
           "        set -l tried (string join ' ' $found $words[1])\n"
           "        contains -- $tried" +
           names +
           "; or break\n"
           "        set found $tried\n"
           "        set -e words[1]\n"
           "    end\n"
           "    echo \"$found\"\n"
           "    count $words\n"
           "end\n"
           "function __docprep_in\n"
           "    set -l now (__docprep_command)\n"
           "    test \"$now[1]\" = \"$argv\"\n"
           "end\n"
           "function __docprep_first\n"
           "    set -l now (__docprep_command)\n"
           "    test \"$now[1]\" = \"$argv\" -a \"$now[2]\" = 0\n"
           "end\n" +
           commands;
}

}  // namespace

std::vector<std::string> shell_names() {
    return {"bash", "zsh", "fish"};
}

std::string completion(size_t shell, const CommandText& program) {
    switch (shell) {
        case 0:
            return bash_script(program);
        case 1:
            return zsh_script(program);
        default:
            return fish_script(program);
    }
}

void add_completion(CLI::App& app, CompletionOptions& options) {
    const auto set_shell = [&options](const std::string& text) {
        options.shell = position_of("shell", text, shell_names());
    };
    app.add_option_function<std::string>("shell", set_shell, "One of " + listed(shell_names()))
        ->required()
        ->type_name("NAME");
}

}  // namespace docprep
