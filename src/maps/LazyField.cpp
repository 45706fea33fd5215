#include "maps/LazyField.h"

#include <QtGlobal>

#include <algorithm>
#include <utility>

// calloc() maps blocks above the threshold of keepFreedMemory() one by one and leaves them alone,
// since the system gives zeros. Below it, it clears what was used before, which is little.
LazyField::LazyField(std::size_t size)
    : values_(size == 0 ? nullptr : static_cast<double*>(std::calloc(size, sizeof(double))))
    , size_(size)
{
    if (size > 0)
        Q_CHECK_PTR(values_.get());
}

LazyField::LazyField(const LazyField& other)
    : LazyField(other.size_)
{
    std::copy(other.begin(), other.end(), data());
}

LazyField::LazyField(LazyField&& other) noexcept
    : values_(std::move(other.values_))
    , size_(std::exchange(other.size_, 0))
{
}

void LazyField::reset(std::size_t size, std::size_t first, std::size_t last)
{
    if (size == size_) {
        if (first < last)
            std::fill(data() + first, data() + last, 0.0);
        return;
    }
    // The former memory goes first: both are never held at once.
    *this = LazyField();
    *this = LazyField(size);
}

LazyField& LazyField::operator=(LazyField other) noexcept
{
    values_.swap(other.values_);
    std::swap(size_, other.size_);
    return *this;
}
