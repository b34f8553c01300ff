// Integrals of smooth functions.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include <boost/math/quadrature/gauss.hpp>

namespace zeq::brep {

/// The integral of a function over one piece, exact for polynomials of degree 19. The first end may be the
/// greater one.
template <class Function>
double gaussIntegral(const Function& function, double from, double to) {
    if (from > to) return -gaussIntegral(function, to, from);
    return from < to ? boost::math::quadrature::gauss<double, 10>::integrate(function, from, to) : 0;
}

/// The integral over a piece, where `whole` is the first attempt, by halving until that no longer matters.
template <class Function>
double refinedIntegral(const Function& function, double from, double to, double whole, double tolerance,
                       int halvings) {
    const double middle = (from + to) / 2;
    const double left = gaussIntegral(function, from, middle);
    const double right = gaussIntegral(function, middle, to);
    if (halvings == 0 || !(std::abs(left + right - whole) > tolerance)) return left + right;
    return refinedIntegral(function, from, middle, left, tolerance, halvings - 1) +
           refinedIntegral(function, middle, to, right, tolerance, halvings - 1);
}

/// A function that is smooth between breaks, to be integrated from the first to the last of them.
template <class Function>
struct Integrand {
    Function function;
    std::vector<double> breaks;
};
template <class Function>
Integrand(Function, std::vector<double>) -> Integrand<Function>;

/// The sum of the integrals. Its error is about 1e-10 of the sum of their magnitudes, so that one which
/// hardly counts takes hardly any time.
template <class Function>
double integral(const std::vector<Integrand<Function>>& integrands) {
    constexpr double precision = 1e-10;
    constexpr int mostHalvings = 5;
    std::vector<double> wholes;
    double magnitude = 0;
    for (const auto& [function, breaks] : integrands)
        for (std::size_t i = 1; i < breaks.size(); ++i) {
            wholes.push_back(gaussIntegral(function, breaks[i - 1], breaks[i]));
            magnitude += std::abs(wholes.back());
        }
    double sum = 0;
    auto whole = wholes.begin();
    for (const auto& [function, breaks] : integrands)
        for (std::size_t i = 1; i < breaks.size(); ++i)
            sum += refinedIntegral(function, breaks[i - 1], breaks[i], *whole++, precision * magnitude,
                                   mostHalvings);
    return sum;
}

template <class Function>
double integral(const Integrand<Function>& integrand) {
    return integral(std::vector{integrand});
}

/// The ends of a range and those of the ascending values in between. The first end may be the greater one.
inline std::vector<double> breaksBetween(double from, double to, const std::vector<double>& values) {
    std::vector<double> breaks{std::min(from, to)};
    for (const double value : values)
        if (value > breaks.back() && value < std::max(from, to)) breaks.push_back(value);
    breaks.push_back(std::max(from, to));
    if (from > to) std::reverse(breaks.begin(), breaks.end());
    return breaks;
}

} // namespace zeq::brep
