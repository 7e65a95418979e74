// A batch but for its work: the plan, the state, what is counted and what is shown.
#ifndef DOCPREP_BATCH_LEDGER_H
#define DOCPREP_BATCH_LEDGER_H

#include <chrono>
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "batch/batch_inputs.h"
#include "batch/batch_item.h"
#include "batch/batch_options.h"
#include "batch/batch_progress.h"
#include "batch/batch_state.h"
#include "output/output_files.h"

namespace docprep {

/// Kept by whoever lets others do the work: threads of its own, or workers on other machines. First those of claimed()
/// that still hold are skipped; then, between begin() and finish(), everything in items() is prepared in any order.
///
/// Not for several threads at once; but any may read items() and known() while one skips, or notes.
class BatchLedger {
 public:
    /// Finds the photographs, keeps other batches out of the folder, opens its state, and gives each photograph its folder.
    /// What cannot be searched counts as failed.
    /// @param options  must live as long as this
    /// @param list     the names that "-" stands for
    /// @throws Failure, std::bad_alloc; so do all others
    BatchLedger(const BatchOptions& options, std::FILE* list);

    const std::vector<BatchItem>& items() const { return items_; }

    /// With --resume, the numbers of the items that an earlier batch has done alike.
    std::vector<size_t> claimed() const;
    /// What the earlier batch has noted of one of these.
    const BatchRow& known(size_t item) const { return known_.at(items_[item].row.input); }
    /// Nothing is to be done for this one; it is among the items until begin().
    void skip(size_t item);

    /// From here on the state calls none of the items done, until they are. The items get other numbers.
    void begin();
    void warn(size_t item, const std::string& warning);
    /// Notes that an item is being prepared, or what came of it.
    void note(size_t item, BatchRow row);
    /// Prints a line about the batch as a whole.
    void complain(const std::string& about, const std::string& reason) { progress_.complain(about, reason); }
    /// Shows how far things are, and commits now and then. Returns whether it has.
    bool tick();
    /// Writes down what was noted. What is called done has reached the disk before.
    void commit();
    /// Commits, removes empty folders and writes the index.
    void finish();

    const BatchCounts& counts() const { return counts_; }
    /// Prints the summary, unless there shall be none. Returns the batch's exit code.
    int conclude() const;

 private:
    BatchLedger(const BatchOptions& options, BatchInputs inputs);

    void plan(std::vector<BatchInput> photographs);
    void make_folder_above(const std::string& folder) const;
    void remove_empty_folders() const;
    void write_index();

    const BatchOptions& options_;
    OutputFiles folder_;
    BatchProgress progress_;
    std::optional<BatchState> state_;
    std::map<std::string, BatchRow> known_;  // of earlier batches
    std::vector<BatchItem> items_;
    std::vector<bool> skipped_;  // of the items; empty after begin()
    BatchCounts counts_;
    double milliseconds_ = 0;  // of all photographs together
    std::vector<BatchRow> uncommitted_;
    std::chrono::steady_clock::time_point last_commit_ = std::chrono::steady_clock::now();
};

}  // namespace docprep

#endif  // DOCPREP_BATCH_LEDGER_H
