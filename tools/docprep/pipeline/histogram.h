// Counting pixels by a value.
#ifndef DOCPREP_HISTOGRAM_H
#define DOCPREP_HISTOGRAM_H

#include <array>
#include <cstddef>
#include <cstdint>

namespace docprep {

/// Pixels by a level, or by the difference of two: -255 .. 255.
class Histogram {
 public:
    void add(int value) {
        const int at = value + kMost;
        ++counts_[static_cast<size_t>(at)];
        ++all_;
    }

    bool empty() const { return all_ == 0; }

    int64_t count(int value) const {
        const int at = value + kMost;
        return counts_[static_cast<size_t>(at)];
    }

    /// The least value that a share, above 0, of the pixels is not above. There must be pixels.
    int quantile(double share) const {
        int value = -kMost;
        for (int64_t n = counts_[0]; static_cast<double>(n) < share * static_cast<double>(all_);) {
            const int at = ++value + kMost;
            n += counts_[static_cast<size_t>(at)];
        }
        return value;
    }

 private:
    static constexpr int kMost = 255;

    std::array<int64_t, 2 * kMost + 1> counts_{};
    int64_t all_ = 0;
};

}  // namespace docprep

#endif  // DOCPREP_HISTOGRAM_H
