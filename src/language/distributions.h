#pragma once

#include "language/breath.h"
#include "language/randomStreams.h"

/// Samples of the distributions of the language. The algorithms are contracts: order and number of draws decide the
/// results of a model, so none may be replaced by a library's.
///
/// Parameters that can't be checked give what the arithmetic gives; a loop that they keep from ending breathes.
class cSampler {
public:
    cSampler(cRandomGenerator& stream, cBreath& host) : generator(stream), breath(host) {}

    double uniform() { return generator.uniform(); }
    /// @throws cException (code 2) if `low` is greater than `high`.
    double uniform(double low, double high);
    /// Not the textbook triangle: the branch changes at the density's peak 2 / (high - low). One draw, also on failure.
    /// @throws cException (code 2) if the parameters are not in ascending order.
    double triangular(double low, double mode, double high);
    /// PERT sample with lambda 4, from two gamma samples.
    /// @throws cException (code 2) if the parameters are not in ascending order.
    double pert(double low, double mode, double high);
    /// PERT sample whose range is widened from the 5th and 95th percentile, the lower end held at 0 or above.
    /// @throws cException (code 2) unless the mode lies at or above the widened upper end: the test is the reverse of
    /// the one in `pert`, and models rely on it.
    double pertFromPercentiles(double percentile5, double mode, double percentile95);
    /// Gamma sample of shape `alpha` and scale `beta`: below 1 by Ahrens and Dieter's rejection (1974), whole shapes
    /// below 20 as a product of uniforms, all others by the tangent method (Ahrens and Dieter 1974).
    double gamma(double alpha, double beta);
    /// Exponential sample of the given rate (not mean): a rate of 0 gives infinity.
    double exponential(double rate);
    /// Normal sample by Marsaglia's polar method (1964); the second value of the pair is thrown away.
    double normal(double mean, double deviation);

private:
    double uniformAboveZero();
    double gammaBelowOne(double alpha);
    double gammaOfWholeShape(double alpha);
    double gammaByTangent(double alpha);
    double pertWithin(double low, double mode, double high);

    cRandomGenerator& generator;
    cBreath& breath;
};
