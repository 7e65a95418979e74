// What docprep's exit codes mean.
#ifndef DOCPREP_EXIT_CODES_H
#define DOCPREP_EXIT_CODES_H

namespace docprep {

constexpr int kDone = 0;
constexpr int kRefused = 1;
constexpr int kFailed = 2;
constexpr int kWrongUsage = 64;

struct ExitCode {
    int code;
    const char* meaning;
};

constexpr ExitCode kExitCodes[] = {
    {kDone, "done"},
    {kRefused,
     "the photograph, or some of a batch, was refused, as by --min-sharpness; nothing was written of it"},
    {kFailed,
     "something is wrong with a file, some of a batch, a folder or memory; nothing was written of it"},
    {kWrongUsage, "the arguments are wrong; nothing was read"},
};

}  // namespace docprep

#endif  // DOCPREP_EXIT_CODES_H
