// The parts of the work of the command without a name, and which of them a run does.
#ifndef DOCPREP_STAGES_H
#define DOCPREP_STAGES_H

#include <string>
#include <vector>

namespace docprep {

enum class Stage {
    kSharpness,   ///< whether the photograph is in focus
    kBinarise,    ///< its dark print
    kPage,        ///< that print made level
    kComponents,  ///< the page's components
    kRows,        ///< its rows of text
    kSeal,        ///< the photograph's red seals
    kSaliency     ///< and its saliency
};

/// The names of the stages, by their values.
std::vector<std::string> stage_names();

/// What a stage is, for people.
std::string stage_meaning(Stage stage);

/// A choice of stages; none at first.
class Stages {
 public:
    static Stages all();

    void choose(Stage stage) { chosen_ |= bit(stage); }
    /// Computes the stage although it is not chosen.
    void need(Stage stage) { also_needed_ |= bit(stage); }

    /// Whether the stage's picture is written.
    bool chosen(Stage stage) const { return (chosen_ & bit(stage)) != 0; }
    /// Whether the stage is computed: it is chosen, or a chosen one builds on it.
    bool needed(Stage stage) const;

 private:
    static unsigned bit(Stage stage) { return 1u << static_cast<unsigned>(stage); }

    unsigned chosen_ = 0;
    unsigned also_needed_ = 0;
};

}  // namespace docprep

#endif  // DOCPREP_STAGES_H
