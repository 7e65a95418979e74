// Include first in every source that computes in floating point, before any other header.
//
// Results are fixed to the bit on every processor, so each step rounds once, in the precision and order in
// which it is written. The build asks for -ffp-contract=off; these pragmas hold the same line when somebody
// else's build compiles the sources without that flag, where aarch64 compilers would fuse a * b + c.
#ifndef ORVEX_991_BASE_FP_STRICT_H
#define ORVEX_991_BASE_FP_STRICT_H

#if defined(__FAST_MATH__) || defined(__ASSOCIATIVE_MATH__) || defined(__RECIPROCAL_MATH__) || \
    defined(__NO_SIGNED_ZEROS__) || (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__)
#error "orvex_991 needs exact floating point: compile without -ffast-math or any part of it"
#endif

#if defined(__clang__)
#pragma STDC FP_CONTRACT OFF
#elif defined(__GNUC__)
#pragma GCC optimize("fp-contract=off")
#endif

#include <cfloat>

#if FLT_EVAL_METHOD != 0
#error "orvex_991 needs float and double evaluated as such: on 32-bit x86 compile with -msse2 -mfpmath=sse"
#endif

#endif  // ORVEX_991_BASE_FP_STRICT_H
