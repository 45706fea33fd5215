#include "spectrum/Fourier.h"

#include "spectrum/Spectrum.h"

#include <fftw3.h>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <vector>

namespace {

/// An array of complex numbers as aligned as the transforms want it.
class Array
{
public:
    explicit Array(int n)
        : data_(fftw_alloc_complex(static_cast<size_t>(n)))
        , size_(static_cast<size_t>(n))
    {
        if (data_ == nullptr)
            return;
        std::fill_n(values(), size_, 0.0);
    }
    ~Array() { fftw_free(data_); }
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;

    fftw_complex* data() { return data_; }
    /// The two complex types have one layout.
    Fourier::Complex* values() { return reinterpret_cast<Fourier::Complex*>(data_); }

private:
    fftw_complex* data_;
    size_t size_;
};

/// Plans are made and given back one at a time; transforms may run meanwhile.
std::mutex& planning()
{
    static std::mutex mutex;
    return mutex;
}

} // namespace

struct Fourier::Plans
{
    const int size;
    Array forwardIn{size}, forwardOut{size}, backwardIn{size}, backwardOut{size};
    fftw_plan forwardPlan = nullptr;
    fftw_plan backwardPlan = nullptr;
    std::vector<double> magnitude;

    explicit Plans(int n)
        : size(n)
    {
        for (Array* array : {&forwardIn, &forwardOut, &backwardIn, &backwardOut}) {
            if (array->data() == nullptr)
                return;
        }
        const std::lock_guard<std::mutex> lock(planning());
        // Estimated plans: a new size must cost nothing noticeable.
        forwardPlan = fftw_plan_dft_1d(size, forwardIn.data(), forwardOut.data(), FFTW_FORWARD,
                                       FFTW_ESTIMATE);
        backwardPlan = fftw_plan_dft_1d(size, backwardIn.data(), backwardOut.data(), FFTW_BACKWARD,
                                        FFTW_ESTIMATE);
    }
    ~Plans()
    {
        const std::lock_guard<std::mutex> lock(planning());
        for (const fftw_plan plan : {forwardPlan, backwardPlan}) {
            if (plan != nullptr)
                fftw_destroy_plan(plan);
        }
    }
    Plans(const Plans&) = delete;
    Plans& operator=(const Plans&) = delete;

    bool complete() const { return forwardPlan != nullptr && backwardPlan != nullptr; }
};

Fourier::Fourier() = default;
Fourier::~Fourier() = default;

int Fourier::size() const
{
    return plans_ ? plans_->size : 0;
}

void Fourier::setSize(int n)
{
    if (n == size())
        return;
    clear();
    if (n < 1)
        return;
    plans_ = std::make_unique<Plans>(n);
    if (!plans_->complete())
        clear();
    else
        plans_->magnitude.resize(static_cast<size_t>(n));
}

void Fourier::clear()
{
    plans_.reset();
}

void Fourier::forward(const double* values)
{
    if (!plans_)
        return;
    std::copy_n(values, plans_->size, plans_->forwardIn.values());
    fftw_execute(plans_->forwardPlan);
}

void Fourier::forward(const Spectrum& s)
{
    if (!plans_)
        return;
    Complex* const in = plans_->forwardIn.values();
    const int n = std::min(plans_->size, s.size());
    const QPointF* const points = s.points.constData();
    for (int i = 0; i < n; ++i)
        in[i] = points[i].y();
    std::fill(in + n, in + plans_->size, 0.0);
    fftw_execute(plans_->forwardPlan);
}

void Fourier::backward(const Complex* values)
{
    if (!plans_)
        return;
    std::copy_n(values, plans_->size, plans_->backwardIn.values());
    fftw_execute(plans_->backwardPlan);
}

const Fourier::Complex* Fourier::forwardOut() const
{
    return plans_ ? plans_->forwardOut.values() : nullptr;
}

const Fourier::Complex* Fourier::backwardOut() const
{
    return plans_ ? plans_->backwardOut.values() : nullptr;
}

const double* Fourier::magnitudes()
{
    if (!plans_)
        return nullptr;
    const Complex* const out = plans_->forwardOut.values();
    // Plain squares and root: std::abs would scale against overflow, at several times the cost.
    std::transform(out, out + plans_->size, plans_->magnitude.begin(), [](const Complex& c) {
        return std::sqrt(c.real() * c.real() + c.imag() * c.imag());
    });
    return plans_->magnitude.data();
}
