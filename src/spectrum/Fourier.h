#pragma once

#include <complex>
#include <memory>

class Spectrum;

/// Discrete Fourier transforms of one size at a time. Neither direction is scaled, so forward and
/// back again gives the values times size(). One thread's at a time.
class Fourier
{
public:
    using Complex = std::complex<double>;

    Fourier();
    ~Fourier();
    Fourier(const Fourier&) = delete;
    Fourier& operator=(const Fourier&) = delete;

    /// Values in a transform; 0 before setSize().
    int size() const;

    /// Prepares transforms of n values; nothing happens when that is the size already. Sizes below
    /// 1, and such as there is no memory for, clear. Pointers given out before are void then.
    void setSize(int n);
    void clear();

    /// Transforms size() values.
    void forward(const double* values);
    /// Transforms the values of a curve, cut or filled up with 0.0 to size().
    void forward(const Spectrum& s);
    /// Transforms size() values back.
    void backward(const Complex* values);

    /// size() results of the last transform; null before setSize().
    const Complex* forwardOut() const;
    const Complex* backwardOut() const;
    /// Absolute values of forwardOut(), worked out by the call; null before setSize().
    const double* magnitudes();

private:
    struct Plans; ///< keeps the transform library out of this header

    std::unique_ptr<Plans> plans_;
};
