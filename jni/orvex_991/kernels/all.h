// Every kernel, for one instruction set. Included once for each, inside a namespace of its own. histogram.h
// calls what bits.h defines.
#ifdef ORVEX_VEC
#include "simd.h"
#endif
#include "adaptive.h"
#include "bits.h"
#include "find.h"
#include "gray.h"
#include "histogram.h"
#include "hsv.h"
#include "lookup.h"
#include "morphology.h"
#include "rotate.h"
#include "rows.h"
#include "stats.h"
#include "threshold.h"
#include "warp.h"
#include "yuv.h"
#ifdef ORVEX_VEC
#include "simd_end.h"
#endif
