// Finds the command, parses its options and maps what happens to exit codes.
// Every failure is one line on standard error.
#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstring>
#include <new>
#include <string>

#include "base/failure.h"
#include "base/heap.h"
#include "batch/batch.h"
#include "cli/exit_codes.h"
#include "cli/usage_error.h"
#include "commands/completion.h"
#include "commands/help.h"
#include "commands/list.h"
#include "commands/man_page.h"
#include "commands/morph.h"
#include "commands/op_command.h"
#include "commands/resize.h"
#include "commands/warp.h"
#include "output/standard_output.h"
#include "output/unfinished.h"
#include "run/prepare.h"
#include "util_exception.h"

namespace {

using docprep::kDone;
using docprep::kFailed;
using docprep::kRefused;
using docprep::kWrongUsage;

int failed(const std::string& file, const char* reason) {
    docprep::complain(file.c_str(), reason);
    return kFailed;
}

/// Files must not take the numbers of standard streams that the caller has closed.
void open_standard_streams() {
    int fd = 0;
    do fd = open("/dev/null", O_RDWR);
    while (fd >= 0 && fd <= STDERR_FILENO);
    if (fd > STDERR_FILENO) close(fd);
}

/// What a failure without a file of its own is about: the input, where there is one.
template <class Options>
auto subject(const Options& options, int) -> decltype((options.input.file)) {
    return options.input.file;
}
template <class Options>
const std::string& subject(const Options&, long) {
    static const std::string nothing;
    return nothing;
}

/// Every command and those below it say which version they are of.
void add_version(CLI::App& app) {
    app.set_version_flag("-V,--version", "docprep " DOCPREP_VERSION, "Print the version and exit");
    for (CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) add_version(*command);
}

/// Runs a command that throws when it is not done.
template <class Options, void (*execute)(const Options&)>
int completed(const Options& options) {
    execute(options);
    return kDone;
}

/// Parses the arguments after the command's name, which argv[0] stands for, and runs the command.
/// @param execute  returns the exit code
template <class Options, void (*declare)(CLI::App&, Options&), int (*execute)(const Options&)>
int run(const char* name, const char* description, int argc, char** argv) {
    Options options;
    const std::string& input = subject(options, 0);
    try {
        docprep::remove_unfinished_on_signals();
        CLI::App app(description, name);
        declare(app, options);
        add_version(app);
        try {
            app.parse(argc, argv);
            return execute(options);
        } catch (const CLI::ParseError& error) {
            if (error.get_exit_code() == 0) return app.exit(error);  // --help, --version
            docprep::complain("", docprep::explained(app, error, argc, argv).c_str());
            return kWrongUsage;
        }
    } catch (const docprep::Refusal& refusal) {
        failed(refusal.file(), refusal.what());
        return kRefused;
    } catch (const docprep::Failure& failure) {
        return failed(failure.file(), failure.what());
    } catch (const orvex_991::CException& exception) {
        return failed(input, docprep::LibraryReason(exception).text);
    } catch (const std::bad_alloc&) {
        return failed(input, "out of memory");
    } catch (const std::exception& exception) {
        return failed(input, exception.what());
    }
}

/// Reads what run() would parse.
template <class Options, void (*declare)(CLI::App&, Options&)>
docprep::CommandText text(const char* name, const char* program, const char* description) {
    Options options;
    CLI::App app(description, program);
    declare(app, options);
    add_version(app);
    return docprep::command_text(app, name);
}

struct Command {
    const char* name;
    const char* program;  ///< as the user calls it
    const char* description;
    int (*run)(const char* program, const char* description, int argc, char** argv);
    docprep::CommandText (*text)(const char* name, const char* program, const char* description);
};

template <class Options, void (*declare)(CLI::App&, Options&), int (*execute)(const Options&)>
constexpr Command command(const char* name, const char* program, const char* description) {
    return {name, program, description, run<Options, declare, execute>, text<Options, declare>};
}

template <class Options, void (*declare)(CLI::App&, Options&), void (*execute)(const Options&)>
constexpr Command command(const char* name, const char* program, const char* description) {
    return command<Options, declare, completed<Options, execute>>(name, program, description);
}

/// The command without a name, with the others below it.
docprep::CommandText whole_text();

struct NoOptions {};

void add_nothing(CLI::App&, NoOptions&) {}

void man(const NoOptions&) {
    docprep::print(docprep::man_page(whole_text()));
}

void help(const docprep::HelpOptions& options) {
    docprep::help(options, whole_text());
}

void completion(const docprep::CompletionOptions& options) {
    docprep::print(docprep::completion(options.shell, whole_text()));
}

constexpr Command kCommands[] = {
    command<docprep::BatchOptions, docprep::add_batch, docprep::batch>("batch", "docprep batch",
                                                                       "Prepares many photographs"),
    command<docprep::WarpOptions, docprep::add_warp, docprep::warp>(
        "warp", "docprep warp", "Turns a picture, or maps it by a matrix"),
    command<docprep::ResizeOptions, docprep::add_resize, docprep::resize>(
        "resize", "docprep resize", "Makes a picture larger or smaller"),
    command<docprep::MorphOptions, docprep::add_morph, docprep::morph>(
        "morph", "docprep morph",
        "Dilates, erodes, opens or closes what is dark in a picture, or white in a black and white one"),
    command<docprep::OperationOptions, docprep::add_operations, docprep::run_operation>(
        "op", "docprep op", "Runs one operation of the library on a picture as it is"),
    command<docprep::ListOptions, docprep::add_list, docprep::list>("list", "docprep list",
                                                                    "Lists the operations of docprep op"),
    command<docprep::HelpOptions, docprep::add_help, help>(
        "help", "docprep help", "Tells about a command, an operation, an option or a topic"),
    command<NoOptions, add_nothing, man>("man", "docprep man", "Prints the manual page"),
    command<docprep::CompletionOptions, docprep::add_completion, completion>(
        "completion", "docprep completion", "Prints a shell's completion script"),
};

constexpr const char* kProgram = "docprep";
constexpr const char* kDescription = "Prepares photographed documents for text recognition";

/// The command without a name, as the program.
void add_program(CLI::App& app, docprep::PrepareOptions& options) {
    docprep::add_prepare(app, options);
    std::string commands = "Commands (docprep COMMAND --help shows more):";
    for (const Command& command : kCommands) {
        std::string name = command.name;
        name.resize(12, ' ');
        commands += "\n  " + name + command.description;
    }
    app.footer(commands);
}

docprep::CommandText whole_text() {
    docprep::CommandText whole = text<docprep::PrepareOptions, add_program>("", kProgram, kDescription);
    for (const Command& command : kCommands)
        whole.commands.push_back(command.text(command.name, command.program, command.description));
    return whole;
}

}  // namespace

int main(int argc, char** argv) {
    docprep::prepare_heap();
    open_standard_streams();
    // Reported as a full disk is: a file size limit, and a reader that has gone.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);

    // A command's name comes first; anywhere else, or spelled ./warp, it is a file.
    for (const Command& command : kCommands)
        if (argc >= 2 && std::strcmp(argv[1], command.name) == 0)
            return command.run(command.program, command.description, argc - 1, argv + 1);
    return run<docprep::PrepareOptions, add_program, completed<docprep::PrepareOptions, docprep::prepare>>(
        kProgram, kDescription, argc, argv);
}
