#include "commands/topics.h"

#include <utility>

#include "cli/exit_codes.h"
#include "cli/options.h"
#include "formats/picture_format.h"
#include "pipeline/stages.h"

namespace docprep {

namespace {

Topic formats() {
    return {
        "formats",
        "Files that docprep reads and writes",
        {"What is read is told by its first bytes, not by its name; - is standard input. Pages and rows are "
         "written as PNG, the result of a command for one picture as its name ends: " +
         listed(picture_format_names()) + "."},
        {{"JPEG", "gray, in colour or CMYK; turned upright by its EXIF orientation"},
         {"PNG", "of any kind; turned upright by its eXIf chunk"},
         {"TIFF, WebP, PNM", "as photographs have them"},
         {"NV21",
          "with --nv21 WxH: a raw camera frame, a luma plane and then rows of V, U pairs; may be gzipped"}}};
}

Topic exit_codes() {
    Topic topic = {"exit-codes",
                   "Exit status",
                   {"Every failure is one line on standard error, and leaves no half-written file."},
                   {}};
    for (const ExitCode& code : kExitCodes)
        topic.entries.emplace_back(std::to_string(code.code), code.meaning);
    return topic;
}

Topic stages() {
    Topic topic = {
        "stages",
        "Stages",
        {"What docprep FILE -o FOLDER computes, and what --stages chooses from. A stage that another "
         "one builds on is computed as well, but only chosen ones leave their picture."},
        {}};
    const std::vector<std::string> names = stage_names();
    for (size_t k = 0; k < names.size(); ++k)
        topic.entries.emplace_back(names[k], stage_meaning(static_cast<Stage>(k)));
    return topic;
}

}  // namespace

std::vector<Topic> topics() {
    return {formats(), stages(), exit_codes()};
}

}  // namespace docprep
