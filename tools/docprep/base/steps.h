// What a run did and how long it took.
#ifndef DOCPREP_STEPS_H
#define DOCPREP_STEPS_H

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace docprep {

/// Named steps in the order in which they last ran.
class Steps {
 public:
    struct Step {
        std::string name;
        double ms = 0;
    };

    /// Runs `work` and adds its time; work that throws does not count.
    template <class Work>
    void run(const std::string& name, Work&& work) {
        const auto start = std::chrono::steady_clock::now();
        std::forward<Work>(work)();
        const auto stop = std::chrono::steady_clock::now();
        add(name, std::chrono::duration<double, std::milli>(stop - start).count());
    }

    /// Notes that a step took so long. The times of one name add up.
    void add(const std::string& name, double ms);

    const std::vector<Step>& list() const { return steps_; }
    double total_ms() const;

 private:
    std::vector<Step> steps_;
};

}  // namespace docprep

#endif  // DOCPREP_STEPS_H
