// The command for many photographs: each is prepared as the command without a name does it, several at a time.
#ifndef DOCPREP_BATCH_H
#define DOCPREP_BATCH_H

#include "batch/batch_options.h"

namespace docprep {

/// Runs the command. Returns its exit code: 0 when all photographs are done, 1 when some were refused and none failed,
/// 2 when some failed.
/// @throws Failure for what is wrong with the batch as a whole; std::bad_alloc
int batch(const BatchOptions& options);

}  // namespace docprep

#endif  // DOCPREP_BATCH_H
