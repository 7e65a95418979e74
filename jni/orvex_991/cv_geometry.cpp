#include "cv_geometry.h"

#include "base/numeric.h"

namespace orvex_cv_991 {

Point Rect::right_bottom() const {
    return Point(wrap_add(x, wrap_sub(width, 1)), wrap_add(y, wrap_sub(height, 1)));
}

bool Rect::cmpArea(const Rect& a, const Rect& b) {
    return wrap_mul(a.width, a.height) < wrap_mul(b.width, b.height);
}

}  // namespace orvex_cv_991
