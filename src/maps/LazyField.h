#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

/// A field of doubles, each 0.0 until it is written.
///
/// A large one takes memory of the machine only where it is written: the system hands out pages of
/// zeros at the first touch. So a walk's maps are taken at once, and one that stays as it is takes
/// none.
class LazyField
{
public:
    LazyField() = default;
    explicit LazyField(std::size_t size);
    LazyField(const LazyField& other);
    LazyField(LazyField&& other) noexcept;
    LazyField& operator=(LazyField other) noexcept;
    ~LazyField() = default;

    /// Makes it a field of `size` zeros. One that has this size already keeps its memory, which is
    /// faster to clear than to take anew; only values from `first` up to, not including, `last`
    /// have been written then.
    void reset(std::size_t size, std::size_t first, std::size_t last);

    bool empty() const { return size_ == 0; }
    std::size_t size() const { return size_; }
    /// Null when empty.
    double* data() { return values_.get(); }
    const double* data() const { return values_.get(); }
    const double* begin() const { return data(); }
    const double* end() const { return data() + size_; }
    double operator[](std::size_t i) const { return data()[i]; }

private:
    struct Free
    {
        void operator()(double* values) const { std::free(values); }
    };

    std::unique_ptr<double[], Free> values_;
    std::size_t size_ = 0;
};
