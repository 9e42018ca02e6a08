#include "words/CorpusStatistics.h"

#include <algorithm>
#include <cmath>

namespace tallyvox {

namespace {

// One side of G2: a ln(a/E), with 0 ln 0 = 0.
double likelihoodTerm(double observed, double expected)
{
    return observed > 0 && expected > 0 ? observed * std::log(observed / expected) : 0.0;
}

// A zero count becomes 0.5, Hardie's choice for Log Ratio.
double nonZero(double count)
{
    return count > 0 ? count : 0.5;
}

bool hasParts(const DispersionSums& sums, qint64 parts)
{
    return parts >= 2 && sums.range > 0 && sums.relativeFrequencies > 0;
}

} // namespace

double logLikelihood(double a, double b, double c, double d)
{
    if (c <= 0 || d <= 0) {
        return 0.0;
    }
    const double expectedA = c * (a + b) / (c + d);
    const double expectedB = d * (a + b) / (c + d);
    return 2.0 * (likelihoodTerm(a, expectedA) + likelihoodTerm(b, expectedB));
}

double logRatio(double a, double b, double c, double d)
{
    if (c <= 0 || d <= 0) {
        return 0.0;
    }
    return std::log2((nonZero(a) / c) / (nonZero(b) / d));
}

bool moreFrequent(double a, double b, double c, double d)
{
    // Cross-multiplied: no division, and equal rates are not "more".
    return a * d > b * c;
}

void DispersionSums::add(double count, double wordTotal, double partWords, double corpusWords)
{
    if (count <= 0 || wordTotal <= 0 || partWords <= 0 || corpusWords <= 0) {
        return;
    }
    const double share = partWords / corpusWords;
    shareDifferences += std::abs(count / wordTotal - share) - share;
    const double relative = count / partWords;
    relativeFrequencies += relative;
    squaredRelativeFrequencies += relative * relative;
    ++range;
}

std::optional<double> juillandD(const DispersionSums& sums, qint64 parts)
{
    if (!hasParts(sums, parts)) {
        return std::nullopt;
    }
    const auto n = static_cast<double>(parts);
    const double mean = sums.relativeFrequencies / n;
    // Rounding may leave a spread of nothing a hair below zero.
    const double variance = std::max(0.0, sums.squaredRelativeFrequencies / n - mean * mean);
    const double variation = std::sqrt(variance) / mean;
    return std::clamp(1.0 - variation / std::sqrt(n - 1.0), 0.0, 1.0);
}

std::optional<double> deviationOfProportions(const DispersionSums& sums, qint64 parts)
{
    if (!hasParts(sums, parts)) {
        return std::nullopt;
    }
    // The parts that lack the word add 1 - (their shares); shareDifferences already took
    // the shares of those that hold it off.
    return std::clamp(0.5 * (1.0 + sums.shareDifferences), 0.0, 1.0);
}

std::optional<double> perMillion(double count, double words)
{
    if (words <= 0) {
        return std::nullopt;
    }
    return count * 1e6 / words;
}

QByteArray figureText(double value)
{
    QByteArray text = QByteArray::number(value, 'f', 4);
    if (text.contains('.')) {
        while (text.endsWith('0')) {
            text.chop(1);
        }
        if (text.endsWith('.')) {
            text.chop(1);
        }
    }
    if (text == "-0") {
        text = "0";
    }
    return text;
}

} // namespace tallyvox
