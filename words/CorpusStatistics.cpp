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
    QByteArray text;
    appendFigure(text, value);
    return text;
}

void appendFigure(QByteArray& text, double value)
{
    // Lists write hundreds of thousands of figures: most are done in integers, as ten
    // thousandths; what does not fit so exactly goes through the general conversion.
    constexpr double scale = 10000.0;
    constexpr double exactLimit = 1e15;
    const double scaled = std::round(value * scale);
    if (!(std::abs(scaled) < exactLimit)) {
        QByteArray general = QByteArray::number(value, 'f', 4);
        if (general.contains('.')) {
            while (general.endsWith('0')) {
                general.chop(1);
            }
            if (general.endsWith('.')) {
                general.chop(1);
            }
        }
        text += general == "-0" ? QByteArray("0") : general;
        return;
    }
    auto units = static_cast<qint64>(scaled);
    if (units < 0) {
        text += '-';
        units = -units;
    }
    text += QByteArray::number(units / 10000);
    qint64 fraction = units % 10000;
    if (fraction == 0) {
        return;
    }
    char digits[5] = {'.', 0, 0, 0, 0};
    int length = 5;
    for (int i = 4; i >= 1; --i) {
        digits[i] = char('0' + fraction % 10);
        fraction /= 10;
    }
    while (digits[length - 1] == '0') {
        --length;
    }
    text.append(digits, length);
}

} // namespace tallyvox
