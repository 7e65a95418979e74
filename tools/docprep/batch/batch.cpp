#include "batch/batch.h"

#include <cstdio>
#include <optional>
#include <string>
#include <utility>

#include "batch/batch_ledger.h"
#include "batch/batch_workers.h"
#include "run/library_log.h"

namespace docprep {

namespace {

/// What a thread says of an item.
struct Message {
    size_t item = 0;
    std::optional<BatchRow> row;  ///< what is to be noted
    std::string warning;          ///< what is odd about its file; empty: nothing
};

size_t threads_of(const BatchOptions& options) {
    return static_cast<size_t>(options.threads);
}

void skip_what_is_done(const BatchOptions& options, BatchLedger& ledger) {
    const std::vector<size_t> claimed = ledger.claimed();
    using Checked = std::pair<size_t, bool>;
    BatchWorkers<Checked> workers;
    workers.run(
        threads_of(options), claimed.size(),
        [&](size_t k, const BatchWorkers<Checked>::Send& send) {
            const size_t item = claimed[k];
            send({item, still_holds(options.output, ledger.known(item), ledger.items()[item])});
        },
        [&](const Checked& checked) {
            if (checked.second) ledger.skip(checked.first);
        },
        [&] { ledger.tick(); });
}

void prepare_all(const BatchOptions& options, BatchLedger& ledger) {
    BatchWorkers<Message> workers;
    workers.run(
        threads_of(options), ledger.items().size(),
        [&](size_t k, const BatchWorkers<Message>::Send& send) {
            BatchItem item = ledger.items()[k];
            item.input.warn = [&](const std::string& warning) { send({k, std::nullopt, warning}); };
            item.row.status = BatchStatus::kRunning;
            send({k, item.row, ""});
            send({k, prepared_row(options.output, options.preparation.options, item), ""});
        },
        [&](const Message& message) {
            if (message.row)
                ledger.note(message.item, *message.row);
            else
                ledger.warn(message.item, message.warning);
        },
        [&] { ledger.tick(); });
}

}  // namespace

int batch(const BatchOptions& options) {
    LibraryLog log(LibraryLines::kDropped);
    std::optional<BatchLedger> ledger;
    {
        const LibraryLog::Redirection redirection(log);
        ledger.emplace(options, stdin);
        skip_what_is_done(options, *ledger);
        ledger->begin();
        prepare_all(options, *ledger);
        ledger->finish();
    }
    return ledger->conclude();
}

}  // namespace docprep
