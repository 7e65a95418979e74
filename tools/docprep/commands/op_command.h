// docprep op: one operation of the library on one picture.
#ifndef DOCPREP_OP_COMMAND_H
#define DOCPREP_OP_COMMAND_H

#include <map>
#include <string>

#include "commands/operations.h"
#include "commands/picture_command.h"

namespace docprep {

struct OperationOptions : PictureOptions {
    const Operation* operation = nullptr;  ///< the one that was named
    Arguments arguments;
    std::map<std::string, std::string> pictures;  ///< files of its parameters
};

/// Declares a command for each operation; parsing fills `options`, which must live as long as `app`.
void add_operations(CLI::App& app, OperationOptions& options);

/// Runs the operation: writes its picture and prints a summary, or prints its numbers as JSON.
/// @throws Failure; CException from the library; std::bad_alloc
void run_operation(const OperationOptions& options);

}  // namespace docprep

#endif  // DOCPREP_OP_COMMAND_H
