#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace nrwave
{

/// How strong samples are, in dB of full scale: |I| or |Q| is 1. Silence has no figures.
class level_t
{
public:
    /// Takes samples in, a block at a time; how they are cut into blocks makes no difference.
    template <class number_t>
    void add(const std::complex<number_t>* samples, std::size_t count)
    {
        double component = m_largest_component;
        double largest = m_largest_power;
        double sum = m_power_sum;
        for (std::size_t i = 0; i < count; ++i) {
            const double real = samples[i].real();
            const double imaginary = samples[i].imag();
            const double power = real * real + imaginary * imaginary;
            component = std::max({component, std::fabs(real), std::fabs(imaginary)});
            largest = std::max(largest, power);
            sum += power;
        }
        m_largest_component = component;
        m_largest_power = largest;
        m_power_sum = sum;
        m_samples += count;
    }

    std::uint64_t samples() const { return m_samples; }
    /// The largest |I| or |Q|.
    std::optional<double> peak_dbfs() const;
    /// The mean of |x|^2.
    std::optional<double> rms_dbfs() const;
    /// The largest |x|^2 over the mean, in dB.
    std::optional<double> papr_db() const;

private:
    std::uint64_t m_samples = 0;
    double m_largest_component = 0.0;
    double m_largest_power = 0.0;
    double m_power_sum = 0.0;
};

} // namespace nrwave
