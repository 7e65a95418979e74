// Internal: the arithmetic kernels, each compiled for the baseline processor and, on x86-64, for AVX2.
//
// An operation asks once which instruction set to use and passes it down; nothing is remembered between
// calls. Every kernel gives the same bytes under every instruction set.
#ifndef ORVEX_991_KERNELS_KERNELS_H
#define ORVEX_991_KERNELS_KERNELS_H

#include <cstddef>
#include <cstdint>

namespace orvex_cv_991 {

enum class Isa { kBaseline, kAvx2 };

/// The widest instruction set that both this build and this processor have.
Isa fastest_isa();

/// Bilinear weights are fixed-point numbers of 11 fraction bits: 2048 is one. A product of two weights and a
/// byte then has 22, and 255 * 2048 * 2048 < 2^30 keeps the sum of four in 32 bits.
constexpr int kWeightBits = 11;
constexpr int kOne_q11 = 1 << kWeightBits;

/// One coordinate of the samples along an output row, by the output column: (row_share + step * col) +
/// offset, in single precision and in this order.
struct CoordinateLine {
    float row_share, step, offset;
};

namespace kernels {

#define ORVEX_KERNEL(result, name, parameters, arguments) result name parameters;
#include "kernels/list.def"
#undef ORVEX_KERNEL

}  // namespace kernels
}  // namespace orvex_cv_991

#endif  // ORVEX_991_KERNELS_KERNELS_H
