// What python3 -m orvex_991.batch has of docprep: everything but who works on which photograph.
//
// Paths are bytes on both sides of the border: they need not be UTF-8.
#include "base/failure.h"
#include "base/heap.h"
#include "batch/batch_item.h"
#include "batch/batch_ledger.h"
#include "batch/batch_options.h"
#include "cli/exit_codes.h"
#include "cli/usage_error.h"
#include "orvex_991_version.h"

#include <pybind11/functional.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace py = pybind11;

namespace {

using docprep::BatchItem;
using docprep::BatchLedger;
using docprep::BatchOptions;
using docprep::BatchPreparation;
using docprep::BatchRow;
using docprep::BatchStatus;

constexpr const char* kProgram = "python3 -m orvex_991.batch";

struct ClusterOptions : BatchOptions {
    std::string scheduler;  ///< empty: workers of its own
    int chunk = 0;          ///< 0: as fits
};

[[noreturn]] void exit_with(int code) {
    PyErr_SetObject(PyExc_SystemExit, py::int_(code).ptr());
    throw py::error_already_set();
}

void declare(CLI::App& app, ClusterOptions& options) {
    CLI::Option* const scheduler =
        app.add_option("--scheduler", options.scheduler,
                       "Prepare on the cluster of the Dask scheduler at this address, as "
                       "tcp://host:8786; by workers of this machine by default")
            ->check([](const std::string& text) { return text.empty() ? "is empty" : ""; })
            ->type_name("ADDRESS");
    constexpr int kMostAtOnce = 10000;
    app.add_option("--chunk", options.chunk,
                   "Give workers so many photographs at a time; at most 16 by default, fewer of few")
        ->check(CLI::Range(1, kMostAtOnce))
        ->type_name("NUMBER");
    add_batch(app, options);
    scheduler->excludes(app.get_option("--jobs"));
    app.set_version_flag("-V,--version", "orvex_991 " ORVEX_991_VERSION, "Print the version and exit");
}

/// Ends the program after --help and --version, and where arguments are wrong.
std::unique_ptr<ClusterOptions> parsed(const std::vector<std::string>& arguments) {
    auto options = std::make_unique<ClusterOptions>();
    CLI::App app("Prepares many photographs on the workers of a cluster", kProgram);
    declare(app, *options);
    std::vector<const char*> argv = {kProgram};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    const int argc = static_cast<int>(argv.size());
    try {
        app.parse(argc, argv.data());
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) exit_with(app.exit(error));
        docprep::complain("", docprep::explained(app, error, argc, argv.data()).c_str());
        exit_with(docprep::kWrongUsage);
    }
    return options;
}

py::bytes as_bytes(const std::string& text) {
    return py::bytes(text);
}

std::string absolute(const std::string& path) {
    return std::filesystem::absolute(path).lexically_normal().string();
}

// ---- Rows and items as tuples that pickle and ast know: what travels, and what receipts hold. ----

py::tuple row_tuple(const BatchRow& row) {
    py::list files;
    for (const std::string& file : row.files) files.append(as_bytes(file));
    return py::make_tuple(as_bytes(row.input), as_bytes(row.folder), as_bytes(row.options), row.version,
                          static_cast<int>(row.status), row.hash, row.bytes, as_bytes(row.error),
                          py::tuple(files), row.text_rows, row.milliseconds, row.finished_at);
}

BatchRow row_of(const py::tuple& tuple) {
    BatchRow row;
    constexpr size_t kColumns = 12;
    const auto last = static_cast<int>(BatchStatus::kFailed);
    if (tuple.size() != kColumns) throw py::value_error("not a row");
    const int status = tuple[4].cast<int>();
    if (status < 0 || status > last) throw py::value_error("not a row");
    row.input = tuple[0].cast<std::string>();
    row.folder = tuple[1].cast<std::string>();
    row.options = tuple[2].cast<std::string>();
    row.version = tuple[3].cast<std::string>();
    row.status = static_cast<BatchStatus>(status);
    row.hash = tuple[5].cast<std::string>();
    row.bytes = tuple[6].cast<std::optional<int64_t>>();
    row.error = tuple[7].cast<std::string>();
    row.files = tuple[8].cast<std::vector<std::string>>();
    row.text_rows = tuple[9].cast<std::optional<int64_t>>();
    row.milliseconds = tuple[10].cast<double>();
    row.finished_at = tuple[11].cast<std::string>();
    return row;
}

py::tuple item_tuple(const BatchItem& item) {
    return py::make_tuple(as_bytes(item.input.file), row_tuple(item.row));
}

/// As a worker has it: its folder need not be that in which the user wrote the file's name.
BatchItem item_of(const py::tuple& tuple, const BatchPreparation& preparation) {
    BatchItem item;
    item.input.file = tuple[0].cast<std::string>();
    item.input.frame_size = preparation.frame_size;
    item.row = row_of(tuple[1].cast<py::tuple>());
    item.input.path = item.row.input;
    return item;
}

// ---- What workers call ----

/// (row, warnings)
py::tuple prepared(const std::string& output, const BatchPreparation& preparation, const py::tuple& photo) {
    BatchItem item = item_of(photo, preparation);
    std::vector<std::string> warnings;
    item.input.warn = [&warnings](const std::string& warning) { warnings.push_back(warning); };
    BatchRow row;
    {
        const py::gil_scoped_release unlocked;
        row = docprep::prepared_row(output, preparation.options, item);
    }
    py::list texts;
    for (const std::string& warning : warnings) texts.append(as_bytes(warning));
    return py::make_tuple(row_tuple(row), texts);
}

bool holds(const std::string& output, const BatchPreparation& preparation, const py::tuple& photo,
           const py::tuple& known) {
    const BatchItem item = item_of(photo, preparation);
    const BatchRow row = row_of(known);
    const py::gil_scoped_release unlocked;
    return docprep::is_alike(row, item) && docprep::still_holds(output, row, item);
}

// ---- What the client calls ----

/// The lock is not held while files are searched, written and waited for.
template <class Result, class... Arguments>
auto unlocked(Result (BatchLedger::*method)(Arguments...)) {
    return [method](BatchLedger& ledger, Arguments... arguments) {
        const py::gil_scoped_release released;
        return (ledger.*method)(std::forward<Arguments>(arguments)...);
    };
}

std::unique_ptr<BatchLedger> ledger_of(const ClusterOptions& options) {
    const py::gil_scoped_release released;
    return std::make_unique<BatchLedger>(options, stdin);
}

void add_options(py::module_& module) {
    py::class_<ClusterOptions>(module, "Options")
        .def(py::init(&parsed), py::arg("arguments"))
        .def_property_readonly("scheduler",
                               [](const ClusterOptions& options) { return as_bytes(options.scheduler); })
        .def_readonly("chunk", &ClusterOptions::chunk)
        .def_readonly("jobs", &ClusterOptions::threads)
        .def_readonly("resume", &ClusterOptions::resume)
        .def_readonly("quiet", &ClusterOptions::quiet)
        .def_property_readonly(
            "output", [](const ClusterOptions& options) { return as_bytes(absolute(options.output)); })
        .def_property_readonly("preparation", [](const ClusterOptions& options) {
            py::list words;
            for (const std::string& word : options.preparation_words) words.append(as_bytes(word));
            return words;
        });
}

void add_ledger(py::module_& module) {
    py::class_<BatchLedger>(module, "Ledger")
        .def(py::init(&ledger_of), py::arg("options"), py::keep_alive<1, 2>())
        .def("__len__", [](const BatchLedger& ledger) { return ledger.items().size(); })
        .def("claimed", &BatchLedger::claimed)
        .def("skip", &BatchLedger::skip, py::arg("item"))
        .def("begin", unlocked(&BatchLedger::begin))
        .def(
            "item",
            [](const BatchLedger& ledger, size_t item) { return item_tuple(ledger.items().at(item)); },
            py::arg("item"))
        .def(
            "known", [](const BatchLedger& ledger, size_t item) { return row_tuple(ledger.known(item)); },
            py::arg("item"))
        .def(
            "running",
            [](BatchLedger& ledger, size_t item) {
                BatchRow row = ledger.items().at(item).row;
                row.status = BatchStatus::kRunning;
                ledger.note(item, std::move(row));
            },
            py::arg("item"))
        .def(
            "note",
            [](BatchLedger& ledger, size_t item, const py::tuple& row) { ledger.note(item, row_of(row)); },
            py::arg("item"), py::arg("row"))
        .def(
            "fail",
            [](BatchLedger& ledger, size_t item, const std::string& reason) {
                ledger.note(item, docprep::failed_row(ledger.items().at(item), reason));
            },
            py::arg("item"), py::arg("reason"))
        .def("warn", &BatchLedger::warn, py::arg("item"), py::arg("warning"))
        .def("complain", &BatchLedger::complain, py::arg("about"), py::arg("reason"))
        .def("tick", unlocked(&BatchLedger::tick))
        .def("commit", unlocked(&BatchLedger::commit))
        .def("finish", unlocked(&BatchLedger::finish))
        .def("conclude", &BatchLedger::conclude)
        .def_property_readonly("done", [](const BatchLedger& ledger) { return ledger.counts().done; });
}

}  // namespace

PYBIND11_MODULE(_batch, module) {
    module.doc() = "What orvex_991.batch has of docprep; not for others.";
    module.attr("__version__") = ORVEX_991_VERSION;
    module.attr("DESK") = as_bytes(docprep::kBatchDesk);
    static PyObject* const failure_class = py::exception<docprep::Failure>(module, "Failure").release().ptr();
    py::register_local_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown) std::rethrow_exception(thrown);
        } catch (const docprep::Failure& failure) {
            const py::tuple about = py::make_tuple(as_bytes(failure.file()), as_bytes(failure.what()));
            PyErr_SetObject(failure_class, about.ptr());
        }
    });
    py::class_<BatchPreparation>(module, "Preparation")
        .def(py::init(&docprep::batch_preparation), py::arg("words"));
    module.def("prepare_heap", &docprep::prepare_heap);
    module.def("prepare", &prepared, py::arg("output"), py::arg("preparation"), py::arg("photo"));
    module.def("holds", &holds, py::arg("output"), py::arg("preparation"), py::arg("photo"), py::arg("row"));
    module.def(
        "complain",
        [](const std::string& about, const std::string& reason) {
            docprep::complain(about.c_str(), reason.c_str());
        },
        py::arg("about"), py::arg("reason"));
    add_options(module);
    add_ledger(module);
}
