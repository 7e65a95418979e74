// A page to look at a batch with.
#ifndef DOCPREP_BATCH_INDEX_H
#define DOCPREP_BATCH_INDEX_H

#include <vector>

#include "base/bytes.h"
#include "batch/batch_state.h"

namespace docprep {

/// The page's name.
constexpr const char* kBatchIndex = "index.html";

/// Of each row's thumbnail, found as a file when it comes into view, and a link to what was made of it. The same bytes
/// for the same results, whenever they were made. Needs nothing but the folders that it lies beside.
Bytes batch_index(std::vector<BatchRow> rows);

}  // namespace docprep

#endif  // DOCPREP_BATCH_INDEX_H
