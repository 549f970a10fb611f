// How often the system has refused an object that a picture needs. Whoever has to know whether a
// picture is whole compares the count before with that afterwards. It is one for all threads: a
// refusal elsewhere costs a picture that is painted once more than it had to be.
#pragma once

#include <atomic>
#include <cstdint>

inline std::atomic<uint32_t> g_nRefusals{0};

inline uint32_t CountRefusals() noexcept
{
    return g_nRefusals.load(std::memory_order_relaxed);
}

inline void NoteRefusal() noexcept
{
    g_nRefusals.fetch_add(1, std::memory_order_relaxed);
}

// Hands on what the system has made. bSound: false for what it may refuse by right.
template <class Handle>
inline Handle Made(Handle h, bool bSound = true) noexcept
{
    if (!h && bSound) NoteRefusal();
    return h;
}
