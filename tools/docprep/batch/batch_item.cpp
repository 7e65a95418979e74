#include "batch/batch_item.h"

#include <chrono>
#include <ctime>
#include <filesystem>

#include "base/failure.h"
#include "batch/content_hash.h"
#include "formats/file_bytes.h"

namespace docprep {

namespace fs = std::filesystem;

namespace {

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

void prepare(const std::string& output, const PreparationOptions& options, InputOptions input,
             BatchRow& row) {
    require_file(input.opened());
    input.seen = [&row](const Bytes& content) {
        row.hash = content_hash(content);
        row.bytes = static_cast<int64_t>(content.size());
    };
    const Prepared prepared =
        prepare_into((fs::path(output) / row.folder).string(), input, options, LibraryLines::kLeft, false);
    for (const std::string& path : prepared.paths) row.files.push_back(fs::path(path).filename().string());
    if (prepared.report.text_rows) row.text_rows = static_cast<int64_t>(prepared.report.text_rows->size());
}

void end(BatchRow& row, const std::string& reason) {
    row.status = BatchStatus::kFailed;
    row.error = reason;
}

/// Where the reason is not about the photograph, it says what it is about.
void end(BatchRow& row, BatchStatus status, const InputOptions& input, const Failure& failure) {
    const bool about_it = failure.file() == input.file || failure.file() == input.opened();
    row.status = status;
    row.error = (about_it ? "" : failure.file() + ": ") + failure.what();
}

}  // namespace

BatchRow prepared_row(const std::string& output, const PreparationOptions& options, const BatchItem& item) {
    const auto start = std::chrono::steady_clock::now();
    BatchRow row = item.row;
    try {
        prepare(output, options, item.input, row);
        row.status = BatchStatus::kDone;
    } catch (const Refusal& refusal) {
        end(row, BatchStatus::kRefused, item.input, refusal);
    } catch (const Failure& failure) {
        end(row, BatchStatus::kFailed, item.input, failure);
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

BatchRow failed_row(const BatchItem& item, const std::string& reason) {
    BatchRow row = item.row;
    end(row, reason);
    row.finished_at = utc_now();
    return row;
}

bool is_alike(const BatchRow& row, const BatchItem& item) {
    return row.status == BatchStatus::kDone && row.options == item.row.options &&
           row.version == item.row.version && row.folder == item.row.folder && !row.files.empty();
}

bool still_holds(const std::string& output, const BatchRow& row, const BatchItem& item) {
    const fs::path folder = fs::path(output) / row.folder;
    for (const std::string& name : row.files) {
        std::error_code ignored;
        if (!fs::is_regular_file(folder / name, ignored)) return false;
    }
    try {
        require_file(item.input.opened());
        return content_hash(read_file(item.input.opened())) == row.hash;
    } catch (const Failure&) {
        return false;  // who prepares it says why
    }
}

}  // namespace docprep
