#include "base/steps.h"

#include <algorithm>

namespace docprep {

double Steps::total_ms() const {
    double sum = 0;
    for (const Step& step : steps_) sum += step.ms;
    return sum;
}

void Steps::add(const std::string& name, double ms) {
    const auto same =
        std::find_if(steps_.begin(), steps_.end(), [&](const Step& step) { return step.name == name; });
    const double before = same == steps_.end() ? 0 : same->ms;
    if (same != steps_.end()) steps_.erase(same);
    steps_.push_back({name, before + ms});
}

}  // namespace docprep
