#pragma once

/// Tells the processor that what stands there will be asked for soon, so that it is fetched while
/// others are at work. A hint: nothing depends on it, and the address may be any.
inline void PideMemoria([[maybe_unused]] const void* donde)
{
#if defined(__GNUC__)
    __builtin_prefetch(donde);
    asm volatile(""); // g++ leaves out the calls of a function that does nothing but hint
#endif
}
