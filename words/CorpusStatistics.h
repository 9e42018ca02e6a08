#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <optional>

namespace tallyvox {

// The figures of corpus linguistics that the word-list options add, as pure functions of
// counts. Every count is a double: the sums of a large corpus leave 32 bits behind, and
// the formulas divide anyway.

/// G2, the log-likelihood of Rayson and Garside (2000), of a word counted a times in a
/// corpus of c words and b times in one of d words: 2 (a ln(a/E1) + b ln(b/E2)), with
/// E1 = c (a+b)/(c+d), E2 = d (a+b)/(c+d) and 0 ln 0 taken as 0. 0 when either corpus is
/// empty.
double logLikelihood(double a, double b, double c, double d);

/// Log Ratio (Hardie 2014): the binary log of (a/c) / (b/d), a count of 0 taken as 0.5 so
/// that a word missing on one side still gets a finite figure. 0 when either corpus is
/// empty.
double logRatio(double a, double b, double c, double d);

/// True when a word counted a times in c words is relatively more frequent than one
/// counted b times in d words.
bool moreFrequent(double a, double b, double c, double d);

/// A word's occurrences over the parts of a corpus, added part by part. Parts where the
/// word does not occur add nothing, so a sparse caller visits only the parts that hold it.
struct DispersionSums {
    /// Of the parts that hold it: the sum of |v - s| - s, v the word's share of its
    /// occurrences in the part and s the part's share of the corpus.
    double shareDifferences = 0;
    /// The sums of the word's relative frequencies in the parts and of their squares.
    double relativeFrequencies = 0;
    double squaredRelativeFrequencies = 0;
    /// The parts that hold it.
    qint64 range = 0;

    /// count of the word's wordTotal occurrences fall in a part of partWords words, of
    /// corpusWords in all.
    void add(double count, double wordTotal, double partWords, double corpusWords);
};

/// Juilland's D over parts parts: 1 - V / sqrt(parts - 1), V the coefficient of variation
/// (population standard deviation over mean) of the word's relative frequencies in the
/// parts. Nothing with fewer than two parts or no occurrence.
std::optional<double> juillandD(const DispersionSums& sums, qint64 parts);

/// Gries' DP: half the sum over all parts of |v - s|. Parts without the word add their s,
/// which all together make 1 less those of the parts that hold it. Nothing with fewer
/// than two parts or no occurrence.
std::optional<double> deviationOfProportions(const DispersionSums& sums, qint64 parts);

/// count per million of words; nothing when words is 0.
std::optional<double> perMillion(double count, double words);

/// A figure as lists write it: ASCII, a point, at most four decimals, trailing zeros
/// dropped ("0.2", "12", "-1.5849"), never "-0".
QByteArray figureText(double value);

/// Appends figureText(value) to text.
void appendFigure(QByteArray& text, double value);

} // namespace tallyvox
