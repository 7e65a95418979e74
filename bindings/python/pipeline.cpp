// docprep's pipeline on arrays. What the package's users call is prepare() in orvex_991/_prepare.py.
#include "pipeline/pipeline.h"

#include <cmath>
#include <map>
#include <optional>
#include <utility>

#include "arrays.h"
#include "base/failure.h"
#include "call.h"
#include "pipeline/result_json.h"

namespace orvex_python {

namespace {

// Borrowed for good: the module that they are from stays loaded as long as this one.
struct Exceptions {
    py::handle failed, refused;
} exceptions;

/// Keeps the pictures that docprep writes into a folder.
class KeptPictures : public docprep::PictureSink {
 public:
    /// @param all  otherwise the page alone
    explicit KeptPictures(bool all) : all_(all) {}

    bool wants(docprep::Picture kind) const override {
        return kind == docprep::Picture::kPage || (all_ && !docprep::for_report_alone(kind));
    }
    void take(docprep::Picture kind, docprep::Image picture, int) override {
        pictures_[kind] = std::move(picture);
    }

    /// Arrays by their names; to be called once.
    py::dict hand_over() {
        py::dict arrays;
        for (auto& [kind, picture] : pictures_)
            arrays[docprep::picture_name(kind)] = to_python(std::move(picture));
        return arrays;
    }

 private:
    bool all_;
    std::map<docprep::Picture, docprep::Image> pictures_;
};

bool bool_of(const py::handle& value, const char* name) {
    py::detail::make_caster<bool> caster;
    if (!caster.load(value, false)) wrong_type(name, "a bool", type_of(value));
    return static_cast<bool>(caster);
}

std::string text_of(const py::handle& value, const char* name) {
    if (!py::isinstance<py::str>(value)) wrong_type(name, "a string", type_of(value));
    Py_ssize_t length = 0;
    const char* const text = PyUnicode_AsUTF8AndSize(value.ptr(), &length);
    if (!text) {
        PyErr_Clear();
        wrong_value(name, "text", py::repr(value).cast<std::string>());
    }
    if (length == 0) wrong_value(name, "text", "nothing");
    return {text, static_cast<std::size_t>(length)};
}

/// A path as the system has it, whose bytes need not be UTF-8.
std::string path_of(const py::handle& value, const char* name) {
    PyObject* bytes = nullptr;
    if (!PyUnicode_FSConverter(value.ptr(), &bytes)) {
        const bool type = PyErr_ExceptionMatches(PyExc_TypeError);
        PyErr_Clear();
        if (type) wrong_type(name, "a path", type_of(value));
        wrong_value(name, "a path", py::repr(value).cast<std::string>());
    }
    auto path = py::reinterpret_steal<py::bytes>(bytes).cast<std::string>();
    if (path.empty()) wrong_value(name, "a path", "nothing");
    return path;
}

std::string one_of(const std::vector<std::string>& names) {
    std::string text = "one of ";
    for (const std::string& name : names) text += (&name == &names.front() ? "" : ", ") + name;
    return text;
}

/// The position of a name among those that there are.
template <class Choice>
Choice choice_of(const py::handle& value, const char* name, const std::vector<std::string>& names) {
    if (!py::isinstance<py::str>(value)) wrong_type(name, one_of(names), type_of(value));
    for (std::size_t k = 0; k < names.size(); ++k)
        if (value.equal(py::str(names[k]))) return static_cast<Choice>(k);
    wrong_value(name, one_of(names), py::repr(value).cast<std::string>());
}

docprep::Stages stages_of(const py::handle& value, const char* name) {
    // A text is a sequence, too, of letters.
    if (py::isinstance<py::str>(value) || !py::isinstance<py::iterable>(value))
        wrong_type(name, "an iterable of names", type_of(value));
    docprep::Stages stages;
    for (const py::handle stage : py::iter(value))
        stages.choose(choice_of<docprep::Stage>(stage, name, docprep::stage_names()));
    return stages;
}

std::optional<int> turn_of(const py::handle& value, const char* name) {
    const char* const wanted = "one of auto, 0, 90, 180, 270";
    if (py::isinstance<py::str>(value)) {
        if (value.equal(py::str("auto"))) return std::nullopt;
        wrong_value(name, wanted, py::repr(value).cast<std::string>());
    }
    const int degrees = int_of(value, name);
    if (degrees != 0 && degrees != 90 && degrees != 180 && degrees != 270)
        wrong_value(name, wanted, std::to_string(degrees));
    return degrees;
}

std::optional<float> sharpness_of(const py::handle& value, const char* name) {
    if (value.is_none()) return std::nullopt;
    const float sharpness = float_of(value, name);
    if (!std::isfinite(sharpness) || sharpness <= 0)
        wrong_value(name, "a finite number above 0", py::repr(value).cast<std::string>());
    return sharpness;
}

int orientation_of(const py::handle& value, const char* name) {
    const int orientation = int_of(value, name);
    if (orientation < 1 || orientation > 8) wrong_value(name, "1 .. 8", std::to_string(orientation));
    return orientation;
}

void require_photograph(const U8& image, const char* name) {
    if (image.channels != 1 && image.channels != 3)
        wrong_value(name, "1 or 3 channels", std::to_string(image.channels));
    try {
        docprep::require_size(name, image.rows, image.cols);
    } catch (const docprep::Failure& failure) {
        throw py::value_error(failure.file() + ": " + failure.what());
    }
}

[[noreturn]] void raise_failure(const docprep::Failure& failure, const py::handle& kind) {
    const auto file = py::reinterpret_steal<py::object>(PyUnicode_DecodeFSDefault(failure.file().c_str()));
    const py::object made = kind(file, failure.what());
    PyErr_SetObject(kind.ptr(), made.ptr());
    throw py::error_already_set();
}

py::dict milliseconds_of(const docprep::Steps& steps) {
    py::dict milliseconds;
    for (const docprep::Steps::Step& step : steps.list()) milliseconds[step.name.c_str()] = step.ms;
    return milliseconds;
}

py::tuple run(const py::object& image_given, const py::object& stages, const py::object& turn,
              const py::object& min_sharpness, const py::object& require_text, const py::object& binarise,
              const py::object& page, const py::object& crop, const py::object& keep_skew,
              const py::object& pictures, const py::object& orientation_given, const py::object& file,
              const py::object& format) {
    const Image image(image_given, "image");
    require_photograph(*image, "image");
    docprep::PipelineOptions options;
    options.stages = stages_of(stages, "stages");
    options.turn = turn_of(turn, "turn");
    options.min_sharpness = sharpness_of(min_sharpness, "min_sharpness");
    options.require_text = bool_of(require_text, "require_text");
    options.binarise =
        choice_of<docprep::BinariseMethod>(binarise, "binarise", docprep::binarise_method_names());
    options.page = choice_of<docprep::PageKind>(page, "page", docprep::page_kind_names());
    options.crop = bool_of(crop, "crop");
    options.keep_skew = bool_of(keep_skew, "keep_skew");
    KeptPictures kept(bool_of(pictures, "pictures"));
    const int orientation = orientation_of(orientation_given, "orientation");
    docprep::Report report;
    report.source.file = path_of(file, "file");
    report.source.format = text_of(format, "format");
    docprep::Bytes result;
    try {
        call([&] {
            docprep::Image photo = *image;
            docprep::bring_upright(photo, orientation, report.source, report.steps);
            docprep::run_pipeline(std::move(photo), options, report, kept);
            result = docprep::result_json(report, {});
        });
    } catch (const docprep::Refusal& refusal) {
        raise_failure(refusal, exceptions.refused);
    } catch (const docprep::Failure& failure) {
        raise_failure(failure, exceptions.failed);
    }
    const py::bytes json(reinterpret_cast<const char*>(result.data()), result.size());
    return py::make_tuple(kept.hand_over(), milliseconds_of(report.steps), json);
}

py::tuple names_of(const std::vector<std::string>& names) {
    py::list list;
    for (const std::string& name : names) list.append(name);
    return py::tuple(list);
}

}  // namespace

}  // namespace orvex_python

PYBIND11_MODULE(_pipeline, module) {
    namespace py = pybind11;
    using namespace orvex_python;
    py::options options;
    options.disable_function_signatures();
    module.doc() = "docprep's pipeline; use it by the package's name.";
    init_calls();
    init_arrays();
    const py::object types = py::module_::import("orvex_991._types");
    exceptions.failed = py::getattr(types, "Failed").release();
    exceptions.refused = py::getattr(types, "Refused").release();
    module.attr("STAGES") = names_of(docprep::stage_names());
    module.def(
        "run", run, py::arg("image"), py::kw_only(), py::arg("stages"), py::arg("turn"),
        py::arg("min_sharpness"), py::arg("require_text"), py::arg("binarise"), py::arg("page"),
        py::arg("crop"), py::arg("keep_skew"), py::arg("pictures"), py::arg("orientation"), py::arg("file"),
        py::arg("format"),
        R"(run(image, *, stages, turn, min_sharpness, require_text, binarise, page, crop, keep_skew, pictures, orientation, file, format)
--

What `orvex_991.prepare` does: pictures by their names, milliseconds by steps, and the bytes of result.json.)");
}
