// How large a pixel of the engine's constants is: pens, borders, steps of texts and the like are
// told in pixels, which a host has made larger or smaller for its surface.
#pragma once

#include <cstdint>

constexpr uint32_t PLAIN_PERCENT = 100;
constexpr uint32_t MIN_PIXEL_PERCENT = 25;
constexpr uint32_t MAX_PIXEL_PERCENT = 1600;

class CPixelScale {
public:
    constexpr CPixelScale() noexcept = default;
    // nSamples: device units a pixel of the picture, each way, where it is drawn to be averaged.
    // bGreyTexts: letters are to have no colours at their edges, which go with one ground alone.
    constexpr explicit CPixelScale(uint32_t nPercent, uint32_t nSamples = 1,
                                   bool bGreyTexts = false) noexcept
        : m_nPercent(static_cast<uint16_t>(nPercent)), m_nSamples(static_cast<uint8_t>(nSamples)),
          m_bGreyTexts(bGreyTexts)
    {
    }

    // So many pixels in device units: halves go up, and what is there stays at least a pixel.
    [[nodiscard]] constexpr int32_t operator()(int32_t n) const
    {
        return IsPlain() ? n : Scaled(n);
    }
    // The other way, truncated: what a device length would be in pixels of the constants.
    [[nodiscard]] constexpr int32_t Unscaled(int32_t n) const
    {
        if (IsPlain()) return n;
        return Held(int64_t{n} * PLAIN_PERCENT / (int64_t{m_nPercent} * m_nSamples));
    }
    // A coordinate of the picture in device units.
    [[nodiscard]] constexpr int32_t Sampled(int32_t n) const
    {
        return m_nSamples == 1 ? n : Held(int64_t{n} * m_nSamples);
    }

    // The pixel of the picture that a sample is in, and the scale in pixels of the picture.
    [[nodiscard]] constexpr int32_t PixelOf(int32_t n) const
    {
        return m_nSamples == 1 ? n : n / m_nSamples - (n % m_nSamples < 0 ? 1 : 0);
    }
    [[nodiscard]] constexpr int32_t PixelUpTo(int32_t n) const // that it ends at most
    {
        return n / m_nSamples + (n % m_nSamples > 0 ? 1 : 0);
    }
    [[nodiscard]] constexpr CPixelScale InPicture() const { return CPixelScale(m_nPercent); }

    [[nodiscard]] constexpr bool IsPlain() const
    {
        return m_nPercent == PLAIN_PERCENT && m_nSamples == 1;
    }
    [[nodiscard]] constexpr bool HasGreyTexts() const { return m_bGreyTexts; }
    [[nodiscard]] constexpr uint32_t Percent() const { return m_nPercent; }
    [[nodiscard]] constexpr int32_t Samples() const { return m_nSamples; }
    constexpr bool operator==(const CPixelScale&) const = default;

private:
    [[nodiscard]] int32_t Scaled(int32_t n) const; // apart: it is asked for in many places
    static constexpr int32_t Held(int64_t n)
    {
        if (n > INT32_MAX) return INT32_MAX;
        return n < INT32_MIN ? INT32_MIN : static_cast<int32_t>(n);
    }

    uint16_t m_nPercent = PLAIN_PERCENT;
    uint8_t m_nSamples = 1;
    bool m_bGreyTexts = false;
};
