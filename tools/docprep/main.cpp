// Finds the command, parses its options and maps what happens to exit codes: 0 done, 1 the photograph was refused as
// the user asked, 2 the run failed, 64 wrong usage. Every failure is one line on standard error.
#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>

#include "failure.h"
#include "morph.h"
#include "prepare.h"
#include "resize.h"
#include "unfinished.h"
#include "util_exception.h"
#include "warp.h"

namespace {

constexpr int kRefused = 1;
constexpr int kFailed = 2;
constexpr int kWrongUsage = 64;

/// Prints the one line. Memory may have run out, so nothing is allocated.
void complain(const char* about, const char* reason) {
    char line[2 * 4096];  // a path is no longer than half of that
    std::snprintf(line, sizeof line, "%s%s%s", about, *about ? ": " : "", reason);
    for (char* c = line; *c; ++c) *c = docprep::in_one_line(*c);
    std::fprintf(stderr, "docprep: %s\n", line);
}

int failed(const std::string& file, const char* reason) {
    complain(file.c_str(), reason);
    return kFailed;
}

int failed(const std::string& file, const orvex_991::CException& exception) {
    const auto meaning = [&] {
        if (!exception.message.empty()) return exception.message.c_str();
        switch (exception.code) {
            case 1:
                return "an input check failed";
            case 2:
                return "an operation failed";
            case 3:
                return "no memory for pixels";
            default:
                return "an index is out of range";
        }
    };
    char reason[200];
    std::snprintf(reason, sizeof reason, "library error %d (%s)", exception.code, meaning());
    return failed(file, reason);
}

/// Files must not take the numbers of standard streams that the caller has closed.
void open_standard_streams() {
    int fd = 0;
    do fd = open("/dev/null", O_RDWR);
    while (fd >= 0 && fd <= STDERR_FILENO);
    if (fd > STDERR_FILENO) close(fd);
}

/// Parses the arguments after the command's name, which argv[0] stands for, and runs the command.
template <class Options, void (*declare)(CLI::App&, Options&), void (*execute)(const Options&)>
int run(const char* name, const char* description, int argc, char** argv) {
    Options options;
    const std::string& input = options.input.file;  // what a failure without a file of its own is about
    try {
        docprep::remove_unfinished_on_signals();
        CLI::App app(description, name);
        declare(app, options);
        try {
            app.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            if (error.get_exit_code() == 0) return app.exit(error);  // --help, --version
            complain("", (std::string(error.what()) + " (" + name + " --help shows the usage)").c_str());
            return kWrongUsage;
        }
        execute(options);
        return 0;
    } catch (const docprep::Refusal& refusal) {
        complain(refusal.file().c_str(), refusal.what());
        return kRefused;
    } catch (const docprep::Failure& failure) {
        return failed(failure.file(), failure.what());
    } catch (const orvex_991::CException& exception) {
        return failed(input, exception);
    } catch (const std::bad_alloc&) {
        return failed(input, "out of memory");
    } catch (const std::exception& exception) {
        return failed(input, exception.what());
    }
}

struct Command {
    const char* name;
    const char* program;  ///< as the user calls it
    const char* description;
    int (*run)(const char* name, const char* description, int argc, char** argv);
};

constexpr Command kCommands[] = {
    {"warp", "docprep warp", "Turns a picture, or maps it by a matrix",
     run<docprep::WarpOptions, docprep::add_warp, docprep::warp>},
    {"resize", "docprep resize", "Makes a picture larger or smaller",
     run<docprep::ResizeOptions, docprep::add_resize, docprep::resize>},
    {"morph", "docprep morph",
     "Dilates, erodes, opens or closes what is dark in a picture, or white in a black and white one",
     run<docprep::MorphOptions, docprep::add_morph, docprep::morph>},
};

/// The command without a name, as the program.
void add_program(CLI::App& app, docprep::PrepareOptions& options) {
    docprep::add_prepare(app, options);
    app.set_version_flag("--version", "docprep " DOCPREP_VERSION);
    std::string commands = "Commands for one operation on one picture (docprep COMMAND --help shows more):";
    for (const Command& command : kCommands) {
        std::string name = command.name;
        name.resize(8, ' ');
        commands += "\n  " + name + command.description;
    }
    app.footer(commands);
}

}  // namespace

int main(int argc, char** argv) {
    open_standard_streams();
    // Reported as a full disk is: a file size limit, and a reader that has gone.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);

    // A command's name comes first; anywhere else, or spelled ./warp, it is a file.
    for (const Command& command : kCommands)
        if (argc >= 2 && std::strcmp(argv[1], command.name) == 0)
            return command.run(command.program, command.description, argc - 1, argv + 1);
    return run<docprep::PrepareOptions, add_program, docprep::prepare>(
        "docprep", "Prepares photographed documents for text recognition", argc, argv);
}
