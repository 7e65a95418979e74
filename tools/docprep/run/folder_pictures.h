// The files of a run into a folder: their names, and pictures on their way into them.
#ifndef DOCPREP_FOLDER_PICTURES_H
#define DOCPREP_FOLDER_PICTURES_H

#include <string>
#include <vector>

#include "output/output_files.h"
#include "output/picture_encoders.h"
#include "pipeline/pictures.h"

namespace docprep {

constexpr const char* kPageFile = "page.png";
constexpr const char* kResultFile = "result.json";
constexpr const char* kThumbnailFile = "thumbnail.jpg";
constexpr const char* kReportFile = "report.html";
constexpr const char* kLogFile = "library.log";
constexpr const char* kTimingsFile = "timings.json";

/// How the pictures that people look at are written.
enum class PictureFiles {
    kPng,
    kJpeg,  ///< but for the binary one, which is as small and sharp as a PNG
    kNone
};

std::vector<std::string> picture_files_names();

/// Encodes the pictures that go into a folder.
class FolderPictures : public PictureSink {
 public:
    /// @param thumbnail  whether the page is also written small
    /// @param beside     whether pictures are encoded on threads beside the work
    FolderPictures(PictureFiles files, bool thumbnail, bool beside)
        : files_(files), thumbnail_(thumbnail), encoders_(beside) {}

    bool wants(Picture kind) const override;
    void take(Picture kind, Image picture, int dots_per_inch) override;

    /// Waits for all pictures and adds them.
    /// @throws what an encoder throws
    void finish(OutputFiles& files) { encoders_.finish(files); }

    /// Of the files of the pictures taken.
    const std::vector<std::string>& names() const { return names_; }

 private:
    void begin(const std::string& name, Image picture, PictureFormat format, int dots_per_inch);

    PictureFiles files_;
    bool thumbnail_;
    PictureEncoders encoders_;
    std::vector<std::string> names_;
};

/// Removes what the last run into the folder has left beside its result.json, as that says, and this one does not write.
/// Files that no run writes stay, whatever it says.
/// @param names  what this run writes
void remove_others_of_last_run(const std::string& folder, const std::vector<std::string>& names,
                               OutputFiles& files);

}  // namespace docprep

#endif  // DOCPREP_FOLDER_PICTURES_H
