#include "batch/batch.h"

#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <map>
#include <set>
#include <thread>
#include <utility>

#include "base/failure.h"
#include "batch/batch_folders.h"
#include "batch/batch_index.h"
#include "batch/batch_progress.h"
#include "batch/batch_state.h"
#include "batch/batch_workers.h"
#include "batch/content_hash.h"
#include "cli/exit_codes.h"
#include "cli/options.h"
#include "formats/file_bytes.h"
#include "output/output_files.h"
#include "output/summary.h"

namespace docprep {

namespace fs = std::filesystem;

namespace {

/// One photograph of the batch.
struct Item {
    InputOptions input;
    BatchRow row;  ///< as the state has it, or will have it
};

/// What a thread says of an item.
struct Message {
    size_t item = 0;
    std::optional<BatchRow> row;  ///< what is to be noted
    std::string warning;          ///< what is odd about its file; empty: nothing
};

std::string utc_now() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text;
}

/// @throws Failure for a pipe, whose content --resume could not compare
void require_file(const std::string& file) {
    std::error_code ignored;
    const fs::file_status status = fs::status(file, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status))
        throw Failure(file, "is not a regular file");
}

/// What comes of one photograph. Whatever is wrong with it is said in its row.
class Preparing {
 public:
    Preparing(const std::string& output, const PreparationOptions& options)
        : output_(output), options_(options) {}

    /// @throws std::bad_alloc when there is not even memory to say so
    BatchRow finished(const Item& item) const {
        const auto start = std::chrono::steady_clock::now();
        BatchRow row = item.row;
        try {
            prepare(item.input, row);
            row.status = BatchStatus::kDone;
        } catch (const Refusal& refusal) {
            end(row, BatchStatus::kRefused, item, refusal);
        } catch (const Failure& failure) {
            end(row, BatchStatus::kFailed, item, failure);
        } catch (const orvex_991::CException& exception) {
            end(row, LibraryReason(exception).text);
        } catch (const std::bad_alloc&) {
            end(row, "out of memory");
        } catch (const std::exception& exception) {
            end(row, exception.what());
        }
        const auto stop = std::chrono::steady_clock::now();
        row.milliseconds = std::chrono::duration<double, std::milli>(stop - start).count();
        row.finished_at = utc_now();
        return row;
    }

 private:
    void prepare(InputOptions input, BatchRow& row) const {
        require_file(input.file);
        input.seen = [&row](const Bytes& content) {
            row.hash = content_hash(content);
            row.bytes = static_cast<int64_t>(content.size());
        };
        const Prepared prepared = prepare_into((fs::path(output_) / row.folder).string(), input, options_,
                                               LibraryLines::kLeft, false);
        for (const std::string& path : prepared.paths)
            row.files.push_back(fs::path(path).filename().string());
        if (prepared.report.text_rows)
            row.text_rows = static_cast<int64_t>(prepared.report.text_rows->size());
    }

    static void end(BatchRow& row, const char* reason) {
        row.status = BatchStatus::kFailed;
        row.error = reason;
    }

    /// Where the reason is not about the photograph, it says what it is about.
    static void end(BatchRow& row, BatchStatus status, const Item& item, const Failure& failure) {
        row.status = status;
        row.error = (failure.file() == item.input.file ? "" : failure.file() + ": ") + failure.what();
    }

    const std::string& output_;
    const PreparationOptions& options_;
};

/// A batch at work; the library's lines go elsewhere meanwhile.
class Batch {
 public:
    Batch(const BatchOptions& options, BatchInputs inputs)
        : options_(options),
          preparation_(options.preparation),
          folder_(options.output),
          progress_(options.quiet ? BatchProgress::Show::kNothing : progress_for_standard_error()) {
        preparation_.thumbnail = true;
        folder_.lock();
        state_.emplace(fs::absolute(fs::path(options.output) / kBatchState).string());
        plan(std::move(inputs.photographs));
        for (const Failure& problem : inputs.problems) {
            progress_.complain(problem.file(), problem.what());
            ++counts_.failed;
        }
        counts_.total = static_cast<int64_t>(items_.size() + inputs.problems.size());
    }

    void run() {
        progress_.update(counts_);
        skip_what_is_done();
        // Before a photograph's files change, nothing may call them done any more.
        std::vector<BatchRow> rows;
        for (const Item& item : items_) rows.push_back(item.row);
        state_->put(rows);
        state_->sync();
        for (const Item& item : items_) make_folder_above(item.row.folder);
        prepare_all();
        remove_empty_folders();
        write_index();
    }

    const BatchCounts& counts() const { return counts_; }
    double seconds() const { return progress_.seconds(); }
    double milliseconds() const { return milliseconds_; }

 private:
    /// Makes items of the photographs, each with its folder.
    void plan(std::vector<BatchInput> photographs) {
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
            Item item;
            item.input.file = wishes[k].input.file;
            item.input.frame_size = options_.frame_size;
            item.row.input = wishes[k].input.absolute.string();
            item.row.folder = folders[k];
            item.row.options = options_.preparation_text;
            item.row.version = DOCPREP_VERSION;
            items_.push_back(std::move(item));
        }
    }

    /// Takes those that an earlier batch has done alike off the items.
    void skip_what_is_done() {
        if (!options_.resume) return;
        // One byte a photograph, which its thread alone writes; std::vector<bool> packs them.
        std::vector<char> done(items_.size(), 0);
        BatchWorkers<bool> workers;
        workers.run(
            threads(), items_.size(),
            [&](size_t k, const BatchWorkers<bool>::Send& send) {
                done[k] = is_done(items_[k]) ? 1 : 0;
                send(done[k] != 0);
            },
            [&](bool is) { counts_.skipped += is ? 1 : 0; }, [&] { progress_.update(counts_); });
        std::vector<Item> left;
        for (size_t k = 0; k < items_.size(); ++k)
            if (done[k] == 0) left.push_back(std::move(items_[k]));
        items_ = std::move(left);
    }

    bool is_done(const Item& item) const {
        const auto known = known_.find(item.row.input);
        if (known == known_.end()) return false;
        const BatchRow& row = known->second;
        if (row.status != BatchStatus::kDone || row.options != item.row.options ||
            row.version != item.row.version || row.folder != item.row.folder || row.files.empty())
            return false;
        const fs::path folder = fs::path(options_.output) / row.folder;
        for (const std::string& name : row.files) {
            std::error_code ignored;
            if (!fs::is_regular_file(folder / name, ignored)) return false;
        }
        try {
            require_file(item.input.file);
            return content_hash(read_file(item.input.file)) == row.hash;
        } catch (const Failure&) {
            return false;  // who prepares it says why
        }
    }

    void prepare_all() {
        const Preparing preparing(options_.output, preparation_);
        BatchWorkers<Message> workers;
        workers.run(
            threads(), items_.size(),
            [&](size_t k, const BatchWorkers<Message>::Send& send) {
                Item item = items_[k];
                item.input.warn = [&](const std::string& warning) { send({k, std::nullopt, warning}); };
                item.row.status = BatchStatus::kRunning;
                send({k, item.row, ""});
                send({k, preparing.finished(item), ""});
            },
            [&](const Message& message) { take(message); },
            [&] {
                progress_.update(counts_);
                if (std::chrono::steady_clock::now() - last_commit_ >= kBetweenCommits) commit();
            });
        commit();
    }

    void take(const Message& message) {
        const std::string& file = items_[message.item].input.file;
        if (!message.warning.empty()) progress_.warn(file, message.warning);
        if (!message.row) return;
        const BatchRow& row = *message.row;
        uncommitted_.push_back(row);
        if (row.status == BatchStatus::kRunning) return;
        milliseconds_ += row.milliseconds;
        if (row.status == BatchStatus::kDone) {
            ++counts_.done;
            return;
        }
        ++(row.status == BatchStatus::kRefused ? counts_.refused : counts_.failed);
        progress_.complain(file, row.error);
    }

    /// Notes what was reported. What is called done has reached the disk before that is written down.
    void commit() {
        last_commit_ = std::chrono::steady_clock::now();
        if (uncommitted_.empty()) return;
        const Descriptor folder(open(options_.output.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder.get() < 0 || syncfs(folder.get()) != 0)
            throw Failure(options_.output, system_reason(errno));
        state_->put(uncommitted_);
        uncommitted_.clear();
    }

    /// Threads that made the same folder, and removed it after a failure, would be in each other's way.
    void make_folder_above(const std::string& folder) {
        std::error_code ignored;  // who writes into it says why it is not there
        fs::create_directories((fs::path(options_.output) / folder).parent_path(), ignored);
    }

    /// Those of photographs that failed, also those that a killed batch has left, and the folders above them.
    void remove_empty_folders() {
        for (const Item& item : items_)
            for (fs::path folder = item.row.folder; !folder.empty(); folder = folder.parent_path())
                if (rmdir((options_.output / folder).c_str()) != 0 && errno != ENOENT) break;
    }

    void write_index() {
        std::vector<BatchRow> rows;
        for (auto& [input, row] : state_->rows()) rows.push_back(std::move(row));
        folder_.add(kBatchIndex, batch_index(std::move(rows)));
        folder_.publish("");
    }

    size_t threads() const { return static_cast<size_t>(options_.threads); }

    static constexpr std::chrono::seconds kBetweenCommits{2};

    const BatchOptions& options_;
    PreparationOptions preparation_;
    OutputFiles folder_;
    BatchProgress progress_;
    std::optional<BatchState> state_;
    std::map<std::string, BatchRow> known_;  // of earlier batches
    std::vector<Item> items_;
    BatchCounts counts_;
    double milliseconds_ = 0;  // of all photographs together
    std::vector<BatchRow> uncommitted_;
    std::chrono::steady_clock::time_point last_commit_ = std::chrono::steady_clock::now();
};

std::string with_digits(double value, int digits) {
    char text[48];
    std::snprintf(text, sizeof text, "%8.*f", digits, value);
    return text;
}

void print_summary(const BatchOptions& options, const BatchCounts& counts, double seconds,
                   double milliseconds) {
    Summary summary;
    summary.count("photographs", counts.total);
    summary.count("done", counts.done);
    summary.count("refused", counts.refused);
    summary.count("failed", counts.failed);
    summary.count("skipped", counts.skipped);
    summary.line("seconds", with_digits(seconds, 1));
    if (counts.worked_on() > 0) {
        const auto worked_on = static_cast<double>(counts.worked_on());
        summary.line("a second", with_digits(worked_on / seconds, 1));
        summary.line("ms each", with_digits(milliseconds / worked_on, 1));
    }
    const fs::path output(options.output);
    summary.written({(output / kBatchIndex).string(), (output / kBatchState).string()});
    summary.print();
}

/// The values of options as text: everything that was declared from the `first` on.
std::string text_of_options(const CLI::App& app, size_t first) {
    std::string text;
    const std::vector<const CLI::Option*> all = app.get_options();
    for (size_t k = first; k < all.size(); ++k) {
        if (all[k]->count() == 0) continue;
        text += (text.empty() ? "" : " ") + all[k]->get_name();
        for (const std::string& value : all[k]->results()) text += "=" + value;
    }
    return text;
}

}  // namespace

void add_batch(CLI::App& app, BatchOptions& options) {
    app.add_option("photographs", options.search.arguments,
                   "Files, folders, patterns in quotes; - for a list of names on standard input")
        ->required()
        ->type_name("PHOTOGRAPH");
    const auto not_empty = [](const std::string& text) { return text.empty() ? "is empty" : ""; };
    app.add_option("-o,--output", options.output,
                   "Folder for the results, a folder for each photograph; created if missing")
        ->required()
        ->check(not_empty)
        ->type_name("FOLDER");
    constexpr int kMostThreads = 1024;
    options.threads =
        std::min(std::max(1, static_cast<int>(std::thread::hardware_concurrency())), kMostThreads);
    const auto in_range = [](const std::string& text) {
        return CLI::Range(1, kMostThreads)(text).empty() ? ""
                                                         : "is not from 1 to " + std::to_string(kMostThreads);
    };
    app.add_option("-j,--jobs", options.threads,
                   "Prepare so many photographs at the same time; as many as there are processors by default")
        ->check(in_range)
        ->type_name("NUMBER");
    app.add_flag("--recursive", options.search.recursive, "Search the folders below folders, too");
    app.add_flag("--null", options.search.null, "Names on standard input end with NUL, not with a line feed");
    app.add_flag("--resume", options.resume,
                 "Skip photographs that an earlier batch has done with the same options");
    app.add_flag("-q,--quiet", options.quiet, "Print nothing but errors");
    const size_t first = app.get_options().size();
    add_extents(app, "--nv21", options.frame_size, "The photographs are NV21 frames of W columns and H rows");
    add_preparation(app, options.preparation);
    app.callback([&app, &options, first] { options.preparation_text = text_of_options(app, first); });
}

int batch(const BatchOptions& options) {
    InputSearch search = options.search;
    search.frames = options.frame_size.has_value();
    search.beside = options.output;
    LibraryLog log(LibraryLines::kDropped);
    BatchCounts counts;
    double seconds = 0, milliseconds = 0;
    {
        const LibraryLog::Redirection redirection(log);
        Batch batch(options, find_inputs(search, stdin));
        batch.run();
        counts = batch.counts();
        seconds = batch.seconds();
        milliseconds = batch.milliseconds();
    }
    if (!options.quiet) print_summary(options, counts, seconds, milliseconds);
    if (counts.failed > 0) return kFailed;
    return counts.refused > 0 ? kRefused : kDone;
}

}  // namespace docprep
