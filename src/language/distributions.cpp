#include "language/distributions.h"

#include "language/exception.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double euler = 2.718281828459045;
constexpr double pi = 3.141592653589793;
constexpr double twiceLog2 = 1.3862943611198906;
constexpr double pertLambda = 4.0;

[[noreturn]] void failWith(const char* message) { throw cException{failureCode::expression, message, {}, {}}; }

}  // namespace

double cSampler::uniformAboveZero() {
    for (;;) {
        const double u = uniform();
        if (u != 0.0) return u;
        breath.breathe();
    }
}

double cSampler::uniform(double low, double high) {
    if (low > high) failWith("Max>Min in Uniform distribution.");
    return uniform() * (high - low) + low;
}

double cSampler::triangular(double low, double mode, double high) {
    const double u = uniform();
    if (mode > high || low > high || low > mode)
        failWith("Triangular distribution parameters need to be in ascending order");

    const double range = high - low;
    if (u <= 2.0 / range) return low + std::pow(range * u * (mode - low), 0.5);
    return high - std::pow(range * (1.0 - u) * (high - mode), 0.5);
}

double cSampler::pertWithin(double low, double mode, double high) {
    const double range = high - low;
    const double alpha = (mode - low) * pertLambda / range + 1.0;
    const double beta = (high - mode) * pertLambda / range + 1.0;
    const double x = gamma(alpha, 1.0);
    const double y = gamma(beta, 1.0);
    return x / (y + x) * range + low;
}

double cSampler::pert(double low, double mode, double high) {
    if (mode < low || high < low || high < mode) failWith("Pert parameters need to be in ascending order");
    return pertWithin(low, mode, high);
}

double cSampler::pertFromPercentiles(double percentile5, double mode, double percentile95) {
    const double widening = (percentile95 - percentile5) / 0.9 * 0.05;
    const double low = percentile5 - widening <= 0.0 ? 0.0 : percentile5 - widening;
    const double high = percentile95 + widening;
    if (low > high || low > mode || high > mode) failWith("Pert parameters need to be in ascending order");
    return pertWithin(low, mode, high);
}

double cSampler::gamma(double alpha, double beta) {
    constexpr double largestProduct = 20.0;
    if (alpha < 1.0) return beta * gammaBelowOne(alpha);
    if (alpha == 1.0) return beta * -std::log(1.0 - uniform());
    if (alpha < largestProduct && std::floor(alpha) == alpha) return beta * gammaOfWholeShape(alpha);
    return beta * gammaByTangent(alpha);
}

double cSampler::gammaBelowOne(double alpha) {
    const double border = euler / (alpha + euler);
    for (;;) {
        const double u1 = uniform();
        const double u2 = uniformAboveZero();
        double x = 0.0;
        double q = 0.0;
        if (u1 < border) {
            x = std::pow(u2, 1.0 / alpha);
            q = std::exp(-x);
        } else {
            x = 1.0 - std::log(u2);
            q = std::pow(x, alpha - 1.0);
        }
        if (uniform() < q) return x;
        breath.breathe();
    }
}

double cSampler::gammaOfWholeShape(double alpha) {
    double product = uniform();
    for (int factor = 1; factor < static_cast<int>(alpha); ++factor) product *= uniformAboveZero();
    return -std::log(product);
}

double cSampler::gammaByTangent(double alpha) {
    const double spread = std::sqrt(2.0 * alpha - 1.0);
    for (;;) {
        const double t = std::tan(pi * uniform());
        const double x = spread * t + alpha - 1.0;
        if (x > 0.0) {
            const double density = (1.0 + t * t) * std::exp((alpha - 1.0) * std::log(x / (alpha - 1.0)) - spread * t);
            if (uniform() <= density) return x;
        }
        breath.breathe();
    }
}

double cSampler::exponential(double rate) { return -std::log(1.0 - uniform()) / rate; }

double cSampler::normal(double mean, double deviation) {
    double p = 0.0;
    double q = 0.0;
    double s = 0.0;
    do {
        p = 2.0 * uniform() - 1.0;
        q = 2.0 * uniform() - 1.0;
        s = p * p + q * q;
    } while (s >= 1.0 || p == 0.0 || q == 0.0);

    double logarithm = 0.0;
    if (s > 0.0001) {
        logarithm = std::log(s);
    } else {  // scale up: the squares of tiny numbers would lose their digits
        const int exponent = std::ilogb(std::max(std::fabs(p), std::fabs(q)));
        p = std::scalbn(p, -exponent);
        q = std::scalbn(q, -exponent);
        s = p * p + q * q;
        logarithm = std::log(s) + exponent * twiceLog2;
    }
    const double factor = std::sqrt(-2.0 * logarithm / s);
    return mean + deviation * p * factor;
}
