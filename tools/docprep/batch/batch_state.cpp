#include "batch/batch_state.h"

#include <sqlite3.h>

#include <array>
#include <new>
#include <nlohmann/json.hpp>
#include <utility>

#include "base/failure.h"
#include "base/json.h"
#include "base/utf8.h"

namespace docprep {

namespace {

constexpr int kVersion = 1;
constexpr int kApplication = 0x64707270;  // "dprp"

constexpr const char* kSchema = R"(
    CREATE TABLE photographs (
        input        NOT NULL PRIMARY KEY,
        folder       NOT NULL UNIQUE,
        options      NOT NULL,
        version      TEXT NOT NULL,
        status       TEXT NOT NULL CHECK (status IN ('waiting', 'running', 'done', 'refused', 'failed')),
        hash         TEXT,
        bytes        INTEGER,
        error,
        files        TEXT NOT NULL,
        text_rows    INTEGER,
        milliseconds REAL,
        finished_at  TEXT
    ) WITHOUT ROWID;
    CREATE INDEX photographs_by_status ON photographs (status);
)";

constexpr const char* kColumns =
    "input, folder, options, version, status, hash, bytes, error, files, text_rows, milliseconds, "
    "finished_at";

constexpr std::array kStatuses = {"waiting", "running", "done", "refused", "failed"};

/// Values for the ?1, ?2 ... of a statement, which must not outlive them.
class Values {
 public:
    explicit Values(sqlite3_stmt* statement) : statement_(statement) {}

    /// As TEXT, or as BLOB where it is not UTF-8, which TEXT has to be for whoever reads it.
    void add(const std::string& value) {
        const int n = static_cast<int>(value.size());  // paths and names, far below 2^31
        if (is_utf8(value))
            note(sqlite3_bind_text(statement_, ++column_, value.data(), n, SQLITE_STATIC));
        else
            note(sqlite3_bind_blob(statement_, ++column_, value.data(), n, SQLITE_STATIC));
    }
    void add_or_null(const std::string& value) {
        if (value.empty())
            add_null();
        else
            add(value);
    }
    void add(const std::optional<int64_t>& value) {
        if (value)
            note(sqlite3_bind_int64(statement_, ++column_, *value));
        else
            add_null();
    }
    void add(double value) { note(sqlite3_bind_double(statement_, ++column_, value)); }
    void add_null() { note(sqlite3_bind_null(statement_, ++column_)); }

    /// SQLite's code of the first that went wrong.
    int code() const { return code_; }

 private:
    void note(int code) {
        if (code_ == SQLITE_OK) code_ = code;
    }

    sqlite3_stmt* statement_;
    int column_ = 0;
    int code_ = SQLITE_OK;
};

std::string text(sqlite3_stmt* statement, int column) {
    const void* const bytes = sqlite3_column_blob(statement, column);
    if (!bytes) return "";
    return {static_cast<const char*>(bytes), static_cast<size_t>(sqlite3_column_bytes(statement, column))};
}

std::optional<int64_t> count(sqlite3_stmt* statement, int column) {
    if (sqlite3_column_type(statement, column) == SQLITE_NULL) return std::nullopt;
    return sqlite3_column_int64(statement, column);
}

/// The names in a JSON list; nothing where it is none.
std::vector<std::string> names(const std::string& json) {
    const auto list = nlohmann::json::parse(json, nullptr, false);
    std::vector<std::string> names;
    if (!list.is_array()) return names;
    for (const auto& name : list)
        if (name.is_string()) names.push_back(name.get<std::string>());
    return names;
}

BatchStatus status_of(const std::string& name) {
    for (size_t k = 0; k < kStatuses.size(); ++k)
        if (name == kStatuses[k]) return static_cast<BatchStatus>(k);
    return BatchStatus::kWaiting;
}

BatchRow row_of(sqlite3_stmt* statement) {
    BatchRow row;
    int column = 0;
    row.input = text(statement, column++);
    row.folder = text(statement, column++);
    row.options = text(statement, column++);
    row.version = text(statement, column++);
    row.status = status_of(text(statement, column++));
    row.hash = text(statement, column++);
    row.bytes = count(statement, column++);
    row.error = text(statement, column++);
    row.files = names(text(statement, column++));
    row.text_rows = count(statement, column++);
    row.milliseconds = sqlite3_column_double(statement, column++);
    row.finished_at = text(statement, column++);
    return row;
}

}  // namespace

const char* status_name(BatchStatus status) {
    return kStatuses[static_cast<size_t>(status)];
}

void BatchState::CloseDatabase::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

void BatchState::FinishStatement::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

BatchState::BatchState(const std::string& path) : path_(path) {
    sqlite3* database = nullptr;
    const int code =
        sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    database_.reset(database);
    if (!database) throw std::bad_alloc();
    check(code);
    constexpr int kPatienceMs = 10000;  // with others that write, which none should
    check(sqlite3_busy_timeout(database, kPatienceMs));
    require_ours();
    // Readers and the writer do not wait for each other, and a commit is one short write at the end of a file.
    execute("PRAGMA journal_mode = WAL");
    // A commit is safe from the end of the program, and with the next checkpoint from that of the machine.
    execute("PRAGMA synchronous = NORMAL");
    if (number("PRAGMA user_version") == 0) create();
}

BatchState::~BatchState() = default;

std::map<std::string, BatchRow> BatchState::rows() const {
    std::map<std::string, BatchRow> rows;
    const Statement statement = prepared(std::string("SELECT ") + kColumns + " FROM photographs");
    while (step(statement)) {
        BatchRow row = row_of(statement.get());
        std::string input = row.input;
        rows.emplace(std::move(input), std::move(row));
    }
    return rows;
}

void BatchState::put(const std::vector<BatchRow>& rows) {
    const Statement statement = prepared(std::string("INSERT OR REPLACE INTO photographs (") + kColumns +
                                         ") VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12)");
    execute("BEGIN IMMEDIATE");
    try {
        for (const BatchRow& row : rows) {
            const std::string status = status_name(row.status), files = Json::array(row.files).dump();
            Values values(statement.get());
            values.add(row.input);
            values.add(row.folder);
            values.add(row.options);
            values.add(row.version);
            values.add(status);
            values.add_or_null(row.hash);
            values.add(row.bytes);
            values.add_or_null(row.error);
            values.add(files);
            values.add(row.text_rows);
            if (row.finished_at.empty())
                values.add_null();
            else
                values.add(row.milliseconds);
            values.add_or_null(row.finished_at);
            check(values.code());
            step(statement);
            check(sqlite3_reset(statement.get()));
        }
        execute("COMMIT");
    } catch (...) {
        sqlite3_exec(database_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

void BatchState::sync() {
    check(sqlite3_wal_checkpoint_v2(database_.get(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr));
}

BatchState::Statement BatchState::prepared(const std::string& sql) const {
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v2(database_.get(), sql.c_str(), -1, &statement, nullptr));
    return Statement(statement);
}

bool BatchState::step(const Statement& statement) const {
    const int code = sqlite3_step(statement.get());
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) check(code);
    return false;
}

void BatchState::execute(const char* sql) const {
    check(sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr));
}

int64_t BatchState::number(const char* sql) const {
    const Statement statement = prepared(sql);
    return step(statement) ? sqlite3_column_int64(statement.get(), 0) : 0;
}

void BatchState::require_ours() const {
    const int64_t version = number("PRAGMA user_version"), application = number("PRAGMA application_id");
    if (version == kVersion && application == kApplication) return;
    if (application == kApplication)
        throw Failure(path_, "is of version " + std::to_string(version) +
                                 ", and this docprep knows version " + std::to_string(kVersion));
    if (version != 0 || application != 0 || number("SELECT count(*) FROM sqlite_master") != 0)
        throw Failure(path_, "is not the state of a batch");
}

/// In one transaction: a file is never half of its kind.
void BatchState::create() const {
    const std::string sql = "BEGIN IMMEDIATE;" + std::string(kSchema) +
                            "PRAGMA application_id = " + std::to_string(kApplication) +
                            "; PRAGMA user_version = " + std::to_string(kVersion) + "; COMMIT;";
    execute(sql.c_str());
}

void BatchState::check(int code) const {
    if (code == SQLITE_OK) return;
    if (code == SQLITE_NOMEM) throw std::bad_alloc();
    const int error = sqlite3_system_errno(database_.get());
    const bool of_the_system = code == SQLITE_CANTOPEN || code == SQLITE_IOERR || code == SQLITE_FULL;
    throw Failure(path_,
                  of_the_system && error != 0 ? system_reason(error) : sqlite3_errmsg(database_.get()));
}

}  // namespace docprep
