#include "batch/batch_ledger.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <utility>

#include "base/failure.h"
#include "batch/batch_folders.h"
#include "batch/batch_index.h"
#include "cli/exit_codes.h"
#include "formats/file_bytes.h"
#include "output/summary.h"

namespace docprep {

namespace fs = std::filesystem;

namespace {

BatchInputs inputs_of(const BatchOptions& options, std::FILE* list) {
    InputSearch search = options.search;
    search.frames = options.preparation.frame_size.has_value();
    search.beside = options.output;
    return find_inputs(search, list);
}

std::string with_spaces(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

std::string with_digits(double value, int digits) {
    char text[48];
    std::snprintf(text, sizeof text, "%8.*f", digits, value);
    return text;
}

}  // namespace

BatchLedger::BatchLedger(const BatchOptions& options, std::FILE* list)
    : BatchLedger(options, inputs_of(options, list)) {}

BatchLedger::BatchLedger(const BatchOptions& options, BatchInputs inputs)
    : options_(options),
      folder_(options.output),
      progress_(options.quiet ? BatchProgress::Show::kNothing : progress_for_standard_error()) {
    folder_.lock();
    state_.emplace(fs::absolute(fs::path(options.output) / kBatchState).string());
    plan(std::move(inputs.photographs));
    for (const Failure& problem : inputs.problems) {
        progress_.complain(problem.file(), problem.what());
        ++counts_.failed;
    }
    counts_.total = static_cast<int64_t>(items_.size() + inputs.problems.size());
    progress_.update(counts_);
}

/// Makes items of the photographs, each with its folder.
void BatchLedger::plan(std::vector<BatchInput> photographs) {
    known_ = state_->rows();
    std::map<std::string, BatchRow> others = known_;
    std::vector<FolderWish> wishes;
    for (BatchInput& photograph : photographs) {
        FolderWish wish = {std::move(photograph), ""};
        const auto known = others.find(wish.input.absolute.string());
        if (known != others.end()) {
            if (is_batch_folder(known->second.folder)) wish.before = known->second.folder;
            others.erase(known);
        }
        wishes.push_back(std::move(wish));
    }
    std::vector<std::string> taken;
    taken.reserve(others.size());
    for (const auto& [input, row] : others) taken.push_back(row.folder);
    const std::vector<std::string> folders = batch_folders(wishes, taken);
    for (size_t k = 0; k < wishes.size(); ++k) {
        BatchItem item;
        item.input.file = wishes[k].input.file;
        item.input.frame_size = options_.preparation.frame_size;
        item.row.input = wishes[k].input.absolute.string();
        item.row.folder = folders[k];
        item.row.options = with_spaces(options_.preparation_words);
        item.row.version = DOCPREP_VERSION;
        items_.push_back(std::move(item));
    }
    skipped_.assign(items_.size(), false);
}

std::vector<size_t> BatchLedger::claimed() const {
    std::vector<size_t> numbers;
    if (!options_.resume) return numbers;
    for (size_t k = 0; k < items_.size(); ++k) {
        const auto known = known_.find(items_[k].row.input);
        if (known != known_.end() && is_alike(known->second, items_[k])) numbers.push_back(k);
    }
    return numbers;
}

void BatchLedger::skip(size_t item) {
    skipped_[item] = true;
    ++counts_.skipped;
}

void BatchLedger::begin() {
    std::vector<BatchItem> left;
    for (size_t k = 0; k < items_.size(); ++k)
        if (!skipped_[k]) left.push_back(std::move(items_[k]));
    items_ = std::move(left);
    skipped_.clear();
    // Before a photograph's files change, nothing may call them done any more.
    std::vector<BatchRow> rows;
    for (const BatchItem& item : items_) rows.push_back(item.row);
    state_->put(rows);
    state_->sync();
    for (const BatchItem& item : items_) make_folder_above(item.row.folder);
}

void BatchLedger::warn(size_t item, const std::string& warning) {
    progress_.warn(items_[item].input.file, warning);
}

void BatchLedger::note(size_t item, BatchRow row) {
    const std::string error = row.error;
    const BatchStatus status = row.status;
    milliseconds_ += row.milliseconds;
    uncommitted_.push_back(std::move(row));
    if (status == BatchStatus::kRunning) return;
    if (status == BatchStatus::kDone) {
        ++counts_.done;
        return;
    }
    ++(status == BatchStatus::kRefused ? counts_.refused : counts_.failed);
    progress_.complain(items_[item].input.file, error);
}

bool BatchLedger::tick() {
    constexpr std::chrono::seconds kBetweenCommits{2};
    progress_.update(counts_);
    if (std::chrono::steady_clock::now() - last_commit_ < kBetweenCommits) return false;
    commit();
    return true;
}

void BatchLedger::commit() {
    last_commit_ = std::chrono::steady_clock::now();
    if (uncommitted_.empty()) return;
    const Descriptor folder(open(options_.output.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.get() < 0 || syncfs(folder.get()) != 0) throw Failure(options_.output, system_reason(errno));
    state_->put(uncommitted_);
    uncommitted_.clear();
}

void BatchLedger::finish() {
    commit();
    remove_empty_folders();
    write_index();
    progress_.clear();
}

/// Threads that made the same folder, and removed it after a failure, would be in each other's way.
void BatchLedger::make_folder_above(const std::string& folder) const {
    std::error_code ignored;  // who writes into it says why it is not there
    fs::create_directories((fs::path(options_.output) / folder).parent_path(), ignored);
}

/// Those of photographs that failed, also those that a killed batch has left, and the folders above them.
void BatchLedger::remove_empty_folders() const {
    for (const BatchItem& item : items_)
        for (fs::path folder = item.row.folder; !folder.empty(); folder = folder.parent_path())
            if (rmdir((options_.output / folder).c_str()) != 0 && errno != ENOENT) break;
}

void BatchLedger::write_index() {
    std::vector<BatchRow> rows;
    for (auto& [input, row] : state_->rows()) rows.push_back(std::move(row));
    folder_.add(kBatchIndex, batch_index(std::move(rows)));
    folder_.publish("");
}

int BatchLedger::conclude() const {
    if (!options_.quiet) {
        const double seconds = progress_.seconds();
        Summary summary;
        summary.count("photographs", counts_.total);
        summary.count("done", counts_.done);
        summary.count("refused", counts_.refused);
        summary.count("failed", counts_.failed);
        summary.count("skipped", counts_.skipped);
        summary.line("seconds", with_digits(seconds, 1));
        if (counts_.worked_on() > 0) {
            const auto worked_on = static_cast<double>(counts_.worked_on());
            summary.line("a second", with_digits(worked_on / seconds, 1));
            summary.line("ms each", with_digits(milliseconds_ / worked_on, 1));
        }
        const fs::path output(options_.output);
        summary.written({(output / kBatchIndex).string(), (output / kBatchState).string()});
        summary.print();
    }
    if (counts_.failed > 0) return kFailed;
    return counts_.refused > 0 ? kRefused : kDone;
}

}  // namespace docprep
