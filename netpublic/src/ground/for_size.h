// Is this a build that counts bytes? It leaves out what only saves time; the results are the same.
#ifndef NETPUBLIC_FOR_SIZE_H
#define NETPUBLIC_FOR_SIZE_H

#ifdef __OPTIMIZE_SIZE__
#define NETPUBLIC_UNROLL_FOR_SPEED
#else
#define NETPUBLIC_UNROLL_FOR_SPEED _Pragma("GCC unroll 8")
#endif

// Builds that do not optimise keep such functions apart, too: for whoever steps through them or counts what is run.
#if defined __OPTIMIZE_SIZE__ || !defined __OPTIMIZE__
#define NETPUBLIC_INLINE_FOR_SPEED [[gnu::noinline]]
#else
#define NETPUBLIC_INLINE_FOR_SPEED [[gnu::always_inline]] inline
#endif

namespace netpublic {

#ifdef __OPTIMIZE_SIZE__
inline constexpr bool for_size = true;
#else
inline constexpr bool for_size = false;
#endif

} // namespace netpublic

#endif
