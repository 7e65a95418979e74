#include "batch/batch_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <thread>

#include "cli/options.h"

namespace docprep {

namespace {

/// The options that were given, of those that were declared from the `first` on.
std::vector<std::string> words_of_options(const CLI::App& app, size_t first) {
    std::vector<std::string> words;
    const std::vector<const CLI::Option*> all = app.get_options();
    for (size_t k = first; k < all.size(); ++k) {
        if (all[k]->count() == 0) continue;
        words.push_back(all[k]->get_name());
        for (const std::string& value : all[k]->results()) words.back() += "=" + value;
    }
    return words;
}

void add_batch_preparation(CLI::App& app, BatchPreparation& preparation) {
    preparation.options.thumbnail = true;
    add_extents(app, "--nv21", preparation.frame_size,
                "The photographs are NV21 frames of W columns and H rows");
    add_preparation(app, preparation.options);
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
    add_batch_preparation(app, options.preparation);
    app.callback([&app, &options, first] { options.preparation_words = words_of_options(app, first); });
}

BatchPreparation batch_preparation(const std::vector<std::string>& words) {
    BatchPreparation preparation;
    CLI::App app;
    add_batch_preparation(app, preparation);
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));  // which it takes from the end
    return preparation;
}

}  // namespace docprep
