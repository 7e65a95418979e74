// What a batch knows about its photographs, in a SQLite file that outlives it. docs/batch.md describes the file.
#ifndef DOCPREP_BATCH_STATE_H
#define DOCPREP_BATCH_STATE_H

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace docprep {

/// The file's name.
constexpr const char* kBatchState = "docprep.sqlite";

/// The name of the folder that is there while workers of a cluster are at work.
constexpr const char* kBatchDesk = ".docprep-batch";

enum class BatchStatus {
    kWaiting,  ///< its turn has not come
    kRunning,
    kDone,
    kRefused,  ///< as the options want it
    kFailed
};

const char* status_name(BatchStatus status);

/// A photograph as the state has it. Paths and reasons may hold any bytes.
struct BatchRow {
    std::string input;    ///< its absolute path
    std::string folder;   ///< of its results, relative to that of the batch
    std::string options;  ///< that it was prepared with
    std::string version;  ///< of the docprep that did it
    BatchStatus status = BatchStatus::kWaiting;
    // Of a photograph that is finished, as far as they are known; nothing of one that is not.
    std::string hash;                ///< of its content
    std::optional<int64_t> bytes;    ///< of its content
    std::string error;               ///< why it was refused or failed
    std::vector<std::string> files;  ///< in its folder
    std::optional<int64_t> text_rows;
    double milliseconds = 0;
    std::string finished_at;  ///< UTC, "2026-01-31T23:59:59Z"
};

/// The file, open. Whatever ends the program, what was committed is there and nothing else is; other programs may read
/// meanwhile. Not for several threads at once.
class BatchState {
 public:
    /// Opens the file, or makes it.
    /// @throws Failure, also when it is not one of this kind and version
    explicit BatchState(const std::string& path);
    ~BatchState();
    BatchState(const BatchState&) = delete;
    BatchState& operator=(const BatchState&) = delete;

    /// Everything by input.
    std::map<std::string, BatchRow> rows() const;

    /// Puts rows in the place of those with the same inputs, in one transaction: all or none.
    /// @throws Failure
    void put(const std::vector<BatchRow>& rows);

    /// Returns when what was put is safe from the end of the machine, too.
    /// @throws Failure
    void sync();

 private:
    struct CloseDatabase {
        void operator()(sqlite3* database) const;
    };
    struct FinishStatement {
        void operator()(sqlite3_stmt* statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, FinishStatement>;

    Statement prepared(const std::string& sql) const;
    /// One more row of the result?
    bool step(const Statement& statement) const;
    void execute(const char* sql) const;
    int64_t number(const char* sql) const;
    void require_ours() const;
    void create() const;
    /// @throws Failure unless the code is SQLite's for success
    void check(int code) const;

    std::string path_;
    std::unique_ptr<sqlite3, CloseDatabase> database_;
};

}  // namespace docprep

#endif  // DOCPREP_BATCH_STATE_H
