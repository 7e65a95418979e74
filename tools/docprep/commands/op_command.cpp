#include "commands/op_command.h"

#include <CLI/CLI.hpp>
#include <utility>

#include "base/orientation.h"
#include "cli/near_miss.h"
#include "cli/options.h"
#include "formats/photo.h"
#include "output/standard_output.h"

namespace docprep {

namespace {

void set_value(const Parameter& parameter, const std::string& text, OperationOptions& options) {
    const std::string option = "--" + parameter.name;
    if (parameter.kind == ParameterKind::kPicture) {
        options.pictures[parameter.name] = text;
    } else if (parameter.kind == ParameterKind::kChoice) {
        const size_t position = position_of(option, text, parameter.choices);
        options.arguments.set(parameter.name, {static_cast<double>(position)});
    } else {
        std::optional<std::vector<double>> numbers = parse(parameter, text);
        if (!numbers) throw CLI::ValidationError(option, "'" + text + "' is not " + expected(parameter));
        options.arguments.set(parameter.name, std::move(*numbers));
    }
}

void add_parameter(CLI::App& app, const Parameter& parameter, OperationOptions& options) {
    const std::string option = "--" + parameter.name;
    if (parameter.kind == ParameterKind::kFlag) {
        const auto set = [&options, &parameter](int64_t) { options.arguments.set(parameter.name, {}); };
        app.add_flag_function(option, set, described(parameter));
        return;
    }
    const auto set = [&options, &parameter](const std::string& text) { set_value(parameter, text, options); };
    app.add_option_function<std::string>(option, set, described(parameter))
        ->type_name(type_name(parameter))
        ->required(parameter.required);
}

void add_operation(CLI::App& app, const Operation& operation, OperationOptions& options) {
    CLI::App& command = *app.add_subcommand(operation.name, operation.description);
    if (operation.makes_picture) {
        add_picture_options(command, options, "output,-o,--output");
    } else {
        if (operation.operand != Operand::kNone) add_input(command, options.input);
        add_verbose(command, options.verbose);
    }
    if (operation.operand == Operand::kFrame) command.get_option("--nv21")->required();
    for (const Parameter& parameter : operation.parameters) add_parameter(command, parameter, options);
    command.footer(described(operation.operand));
    command.callback([&] {
        options.operation = &operation;
        for (const Parameter& parameter : operation.parameters)
            if (!parameter.unless_given.empty() && !options.arguments.given(parameter.name))
                set_value(parameter, parameter.unless_given, options);
    });
}

/// Refuses what is no operation. Left to itself the parser would only say that one is required.
void require_operation(const CLI::App& app) {
    const std::vector<std::string> rest = app.remaining();
    if (app.get_subcommands().empty() && rest.empty()) throw CLI::RequiredError("An operation's name");
    if (rest.empty()) return;
    if (!app.get_subcommands().empty()) throw CLI::ExtrasError(rest);
    throw CLI::ValidationError("'" + rest[0] + "' is not an operation; docprep list shows them" +
                               suggestion(rest[0], operation_names()));
}

Arguments with_pictures(const OperationOptions& options, Steps& steps) {
    Arguments arguments = options.arguments;
    for (const auto& [name, file] : options.pictures) {
        Photo photo;
        steps.run("read", [&, &path = file] { photo = read_photo(path); });
        apply_orientation(photo.pixels, photo.orientation);
        arguments.set_picture(name, as_operand(Operand::kBinary, std::move(photo.pixels)));
    }
    return arguments;
}

Result result_of(const OperationOptions& options, Image picture, Steps& steps) {
    const Operation& operation = *options.operation;
    const Arguments arguments = with_pictures(options, steps);
    const Image operand = as_operand(operation.operand, std::move(picture));
    Result result;
    steps.run(operation.name, [&] { result = operation.run(operand, arguments); });
    return result;
}

void write_picture(const OperationOptions& options) {
    run_picture_command(options, [&](const Image& picture, Steps& steps, Summary& summary) {
        Result result = result_of(options, picture, steps);
        const std::string values = result.values.dump();
        if (values != Json::object().dump()) summary.line("values", values);
        return std::move(result.picture);
    });
}

void print_numbers(const OperationOptions& options) {
    Steps steps;
    Source source;
    LibraryLog log(options.verbose ? LibraryLines::kShown : LibraryLines::kDropped);
    Image picture;
    if (options.operation->operand != Operand::kNone) picture = read_input(options.input, log, steps, source);
    Result result;
    {
        const LibraryLog::Redirection redirection(log);
        result = result_of(options, std::move(picture), steps);
    }
    print(result.values.dump() + "\n");
}

}  // namespace

void add_operations(CLI::App& app, OperationOptions& options) {
    for (const Operation& operation : operations()) add_operation(app, operation, options);
    app.require_subcommand(0, 1);
    app.allow_extras();
    app.callback([&app] { require_operation(app); });
}

void run_operation(const OperationOptions& options) {
    if (options.operation->makes_picture)
        write_picture(options);
    else
        print_numbers(options);
}

}  // namespace docprep
