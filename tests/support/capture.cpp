#include "capture.h"

#ifdef __EMSCRIPTEN__
#include <emscripten.h>
#else
#include <unistd.h>
#endif

#include <cctype>
#include <stdexcept>

#include "util_exception.h"

namespace testing_support {

namespace {

// Moves `at` past a number, with its fraction if wanted; false when there is none.
bool skip_number(const std::string& text, size_t& at, bool fraction) {
    const size_t first = at;
    while (at < text.size() &&
           (std::isdigit(static_cast<unsigned char>(text[at])) || (fraction && text[at] == '.')))
        ++at;
    return at > first;
}

}  // namespace

#ifdef __EMSCRIPTEN__

// Its descriptors cannot be exchanged, but what its terminal does with a character can.
Capture::Capture() : saved_(0) {
    std::fflush(stdout);
    EM_ASM({
        const terminal = FS.getStream(1).tty;
        Module.terminalWas = terminal.ops;
        Module.captured = [];
        terminal.ops = ({});
        terminal.ops.put_char = function(tty, character) {
            Module.captured.push(character);
        };
    });
}

std::string Capture::finish() {
    if (saved_ < 0) return {};
    saved_ = -1;
    std::fflush(stdout);
    std::string text(static_cast<size_t>(EM_ASM_INT({
                         FS.getStream(1).tty.ops = Module.terminalWas;
                         return Module.captured.length;
                     })),
                     '\0');
    EM_ASM({ HEAPU8.set(Module.captured, $0); }, text.data());
    return text;
}

#else

namespace {

// One unnamed file serves every capture of the process.
int capture_file() {
    static FILE* const file = std::tmpfile();
    if (!file) throw std::runtime_error("no temporary file for captured output");
    return fileno(file);
}

}  // namespace

Capture::Capture() {
    std::fflush(stdout);
    saved_ = dup(1);
    if (ftruncate(capture_file(), 0) != 0 || lseek(capture_file(), 0, SEEK_SET) != 0 ||
        dup2(capture_file(), 1) < 0)
        throw std::runtime_error("standard output cannot be captured");
}

std::string Capture::finish() {
    if (saved_ < 0) return {};
    std::fflush(stdout);
    dup2(saved_, 1);
    close(saved_);
    saved_ = -1;
    std::string text(static_cast<size_t>(lseek(capture_file(), 0, SEEK_END)), '\0');
    if (pread(capture_file(), text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
        throw std::runtime_error("captured output cannot be read back");
    return text;
}

#endif

Capture::~Capture() {
    finish();
}

std::string printed_by(const std::function<void()>& run) {
    Capture capture;
    run();
    return capture.finish();
}

Result result_of(const std::function<void()>& run) {
    Result result;
    result.printed = printed_by([&] {
        try {
            run();
        } catch (const orvex_991::CException& e) {
            result.code = e.code;
            result.message = e.message.c_str();
        }
    });
    return result;
}

int code_of(const std::function<void()>& run) {
    return result_of(run).code;
}

std::string normalised(const std::string& printed) {
    std::string out;
    size_t at = 0;
    const auto starts = [&](const char* text) {
        return printed.compare(at, std::char_traits<char>::length(text), text) == 0;
    };
    while (at < printed.size()) {
        const bool line_start = at == 0 || printed[at - 1] == '\n';
        if (line_start && (starts("D ") || starts("E "))) {
            const size_t colon = printed.find(':', at);
            if (colon != std::string::npos) {
                size_t end = colon + 1;
                if (skip_number(printed, end, false) && printed.compare(end, 2, "] ") == 0) {
                    out += printed.substr(at, colon - at) + ":#";
                    at = end;
                    continue;
                }
            }
        }
        if (starts("[warn]file: ")) {
            const size_t end = printed.find(", line: ", at);
            const size_t path = printed.rfind("jni/", end);
            if (end != std::string::npos && path != std::string::npos && path > at) {
                size_t after = end + 8;
                skip_number(printed, after, false);
                out += "[warn]file: " + printed.substr(path, end - path) + ", line: #";
                at = after;
                continue;
            }
        }
        if (starts("cost time: ") || starts("done (")) {
            const size_t length = starts("done (") ? 6 : 11;
            size_t end = at + length;
            if (skip_number(printed, end, true) && printed.compare(end, 2, "ms") == 0) {
                out += printed.substr(at, length) + "#";
                at = end;
                continue;
            }
        }
        out += printed[at++];
    }
    return out;
}

}  // namespace testing_support
