// What docprep levels pages with.
#include "call.h"
#include "pipeline/deskew.h"
#include "pipeline/skew.h"
#include "pipeline/text_chains.h"
#include "pipeline/text_components.h"

namespace orvex_wasm {

// As docprep: among the components that can be letters, those that stand in chains tell the angle.
ORVEX_EXPORT(int) estimateSkew(const U8* binary) {
    return code_of([=] {
        vector<Rect> components;
        CImgproc::connectdComponent(*binary, components, nullptr);
        const docprep::TextComponents text = docprep::select_text(components, binary->rows, binary->cols);
        docprep::TextComponents chained;
        chained.kept = docprep::chained_letters(text.kept, docprep::find_chains(text.kept, text.text_height));
        chained.text_height = text.text_height;
        results[0].real = docprep::estimate_skew(chained);
    });
}

ORVEX_EXPORT(int) levelPage(const U8* src, U8* dst, double degrees) {
    return code_of([=] {
        const docprep::Deskew level = docprep::plan_deskew(*src, degrees);
        *dst = level.none() ? *src : docprep::deskewed_on_white(*src, level);
    });
}

}  // namespace orvex_wasm
