#pragma once

#include "image/TiffData.h"

#include <memory>
#include <random>

/// An image of a type with pixels from a function of (x, y).
template<typename F>
std::unique_ptr<TiffData> makeImage(int w, int h, TiffData::PixelType type, F f)
{
    auto image = std::make_unique<TiffData>();
    image->allocate(w, h, type);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const double v = f(x, y);
            if (type == TiffData::ImgLongs)
                image->row<quint32>(y)[x] = quint32(v);
            else if (type == TiffData::Floats)
                image->row<float>(y)[x] = float(v);
            else
                image->row<quint16>(y)[x] = quint16(v);
        }
        image->noteExtremes(y);
    }
    return image;
}

inline void addImage(TiffStack& stack, std::unique_ptr<TiffData> image, double energy)
{
    image->energy = energy;
    stack.append(std::move(image));
}

/// Random counts, some of them zero, from a fixed seed.
class RandomCounts
{
public:
    explicit RandomCounts(unsigned seed, int top = 60000)
        : engine_(seed)
        , top_(top)
    {
    }

    double operator()(int, int)
    {
        const auto v = int(engine_() % unsigned(top_));
        return v % 23 == 0 ? 0.0 : double(v);
    }

private:
    std::mt19937 engine_;
    int top_;
};
