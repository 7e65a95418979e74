// What the library prints on standard output goes into a file, or nowhere.
// prints: bgr2gray printed: 1 line
#include <unistd.h>

#include <cstdio>

#include "cv_imgproc.h"

// While one lives, standard output goes to `file`, that of other threads, too. One at a time in a process.
class StdoutTo {
 public:
    explicit StdoutTo(std::FILE* file) : kept_((std::fflush(stdout), dup(STDOUT_FILENO))) {
        dup2(fileno(file), STDOUT_FILENO);
    }
    ~StdoutTo() {
        std::fflush(stdout);
        dup2(kept_, STDOUT_FILENO);
        close(kept_);
    }
    StdoutTo(const StdoutTo&) = delete;

 private:
    const int kept_;
};

int main() {
    orvex_cv_991::Mat<unsigned char> photo, gray;
    photo.mat_create(2, 2, 3, 255);
    std::FILE* const kept = std::tmpfile();  // std::fopen("/dev/null", "w") drops the lines
    {
        const StdoutTo redirected(kept);
        orvex_cv_991::CImgproc::bgr2gray(photo, gray);
    }
    std::rewind(kept);
    int lines = 0;
    for (int c; (c = std::fgetc(kept)) != EOF;) lines += c == '\n';
    std::fclose(kept);
    std::printf("bgr2gray printed: %d line\n", lines);
}
