// Takes back the macros of simd.h, so that it can be included for another instruction set.
#undef ORVEX_INLINE
#undef ORVEX_UNROLL
#undef ORVEX_INTERLEAVE_LOW
#undef ORVEX_INTERLEAVE_HIGH
#undef ORVEX_INTERLEAVE16_LOW
#undef ORVEX_INTERLEAVE16_HIGH
#undef ORVEX_INTERLEAVE64_LOW
#undef ORVEX_INTERLEAVE64_HIGH
#undef ORVEX_BYTE_PRODUCTS
#undef ORVEX_LOOKUP
#undef ORVEX_PICKS_BY_LOW_BITS
#undef ORVEX_PER_HALF
#undef ORVEX_REPEAT
#undef ORVEX_TIMES4
