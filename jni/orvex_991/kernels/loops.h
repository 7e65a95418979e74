// Every kernel, for one instruction set. Included once for each, inside a namespace of its own. histogram.h
// calls what bits.h defines.
#ifdef ORVEX_VEC
#include "kernels/simd.h"
#endif
#include "kernels/adaptive.h"
#include "kernels/bits.h"
#include "kernels/find.h"
#include "kernels/gray.h"
#include "kernels/histogram.h"
#include "kernels/hsv.h"
#include "kernels/lookup.h"
#include "kernels/rotate.h"
#include "kernels/rows.h"
#include "kernels/scale.h"
#include "kernels/stats.h"
#include "kernels/threshold.h"
#include "kernels/warp.h"
#include "kernels/yuv.h"
#ifdef ORVEX_VEC
#include "kernels/simd_end.h"
#endif
