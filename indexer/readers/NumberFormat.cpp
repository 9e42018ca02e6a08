#include "indexer/readers/NumberFormat.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <vector>

namespace tallyvox::indexer::readers {

namespace {

enum class Kind {
    Literal,
    Zero,  // 0: a digit always shown
    Digit, // # or ?: a digit shown when significant
    Point,
    Comma,
    Percent,
    Exponent,
    Text, // @
    General,
    Year,
    Month,
    Day,
    Hour,
    Minute,
    Second,
    AmPm,
    ElapsedHours,
    ElapsedMinutes,
    ElapsedSeconds,
    Unsupported,
};

struct Token {
    Kind kind;
    std::string text; // a literal's characters, an exponent's sign
    std::size_t width = 1;
};

bool isDateKind(Kind k)
{
    return k >= Kind::Year && k <= Kind::ElapsedSeconds;
}

char lower(char c)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool startsWithNoCase(std::string_view s, std::string_view prefix)
{
    return s.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), s.begin(),
                      [](char a, char b) { return lower(a) == lower(b); });
}

// The sections of a code (positive;negative;zero;text), split outside quotes, escapes and
// brackets.
std::vector<std::string_view> splitSections(std::string_view code)
{
    std::vector<std::string_view> sections;
    std::size_t from = 0;
    char closing = 0;
    for (std::size_t i = 0; i < code.size(); ++i) {
        const char c = code[i];
        if (closing != 0) {
            closing = c == closing ? 0 : closing;
        } else if (c == '"' || c == '[') {
            closing = c == '"' ? '"' : ']';
        } else if (c == '\\' || c == '_' || c == '*') {
            ++i;
        } else if (c == ';') {
            sections.push_back(code.substr(from, i - from));
            from = i + 1;
        }
    }
    sections.push_back(code.substr(std::min(from, code.size())));
    return sections;
}

// [Red], [$€-407], [h], [<100]: colours and locales show nothing, a currency its symbol,
// elapsed time its total; conditions are not rendered here.
Token bracketToken(std::string_view inside)
{
    if (!inside.empty() && inside[0] == '$') {
        return {Kind::Literal, std::string(inside.substr(1, inside.find('-') - 1))};
    }
    if (!inside.empty() && std::all_of(inside.begin(), inside.end(),
                                       [&](char c) { return lower(c) == lower(inside[0]); })) {
        switch (lower(inside[0])) {
        case 'h':
            return {Kind::ElapsedHours, {}, inside.size()};
        case 'm':
            return {Kind::ElapsedMinutes, {}, inside.size()};
        case 's':
            return {Kind::ElapsedSeconds, {}, inside.size()};
        default:
            break;
        }
    }
    const bool name = std::all_of(inside.begin(), inside.end(), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0;
    });
    return {name ? Kind::Literal : Kind::Unsupported, {}};
}

// A run of one date letter (y, m, d, h, s in either case), or nothing.
std::optional<Token> dateToken(std::string_view rest)
{
    const char c = lower(rest[0]);
    Kind kind = Kind::Literal;
    switch (c) {
    case 'y':
        kind = Kind::Year;
        break;
    case 'm':
        kind = Kind::Month;
        break;
    case 'd':
        kind = Kind::Day;
        break;
    case 'h':
        kind = Kind::Hour;
        break;
    case 's':
        kind = Kind::Second;
        break;
    default:
        return std::nullopt;
    }
    std::size_t width = 1;
    while (width < rest.size() && lower(rest[width]) == c) {
        ++width;
    }
    return Token{kind, {}, width};
}

// Reads one token at the start of rest; consumed says how many characters it took.
Token nextToken(std::string_view rest, std::size_t& consumed)
{
    consumed = 1;
    const char c = rest[0];
    switch (c) {
    case '"': {
        const auto end = rest.find('"', 1);
        consumed = end == std::string_view::npos ? rest.size() : end + 1;
        return {Kind::Literal, std::string(rest.substr(1, consumed - 1 - (end != rest.npos)))};
    }
    case '\\':
        consumed = std::min<std::size_t>(2, rest.size());
        return {Kind::Literal, std::string(rest.substr(1, 1))};
    case '_': // the width of the next character: a space
        consumed = std::min<std::size_t>(2, rest.size());
        return {Kind::Literal, " "};
    case '*': // fill with the next character
        consumed = std::min<std::size_t>(2, rest.size());
        return {Kind::Literal, {}};
    case '[': {
        const auto end = rest.find(']');
        consumed = end == std::string_view::npos ? rest.size() : end + 1;
        return bracketToken(rest.substr(1, consumed - 1 - (end != rest.npos)));
    }
    case '0':
        return {Kind::Zero, {}};
    case '#':
    case '?':
        return {Kind::Digit, {}};
    case '.':
        return {Kind::Point, {}};
    case ',':
        return {Kind::Comma, {}};
    case '%':
        return {Kind::Percent, "%"};
    case '@':
        return {Kind::Text, {}};
    default:
        break;
    }
    if ((c == 'E' || c == 'e') && rest.size() > 1 && (rest[1] == '+' || rest[1] == '-')) {
        consumed = 2;
        return {Kind::Exponent, std::string(1, rest[1])};
    }
    for (const std::string_view marker : {"AM/PM", "A/P"}) {
        if (startsWithNoCase(rest, marker)) {
            consumed = marker.size();
            return {Kind::AmPm, {}, marker.size() == 5 ? 2u : 1u};
        }
    }
    if (startsWithNoCase(rest, "General")) {
        consumed = 7;
        return {Kind::General, {}};
    }
    if (auto date = dateToken(rest)) {
        consumed = date->width;
        return *date;
    }
    return {Kind::Literal, std::string(1, c)};
}

// m is minutes right after hours or right before seconds.
void markMinutes(std::vector<Token>& tokens)
{
    Kind previous = Kind::Literal;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        Token& token = tokens[i];
        if (!isDateKind(token.kind)) {
            continue;
        }
        if (token.kind == Kind::Month && token.width <= 2) {
            const auto next = std::find_if(
                tokens.begin() + static_cast<std::ptrdiff_t>(i) + 1, tokens.end(),
                [](const Token& t) { return isDateKind(t.kind) || t.kind == Kind::AmPm; });
            if (previous == Kind::Hour || previous == Kind::ElapsedHours ||
                (next != tokens.end() && next->kind == Kind::Second)) {
                token.kind = Kind::Minute;
            }
        }
        previous = token.kind;
    }
}

std::vector<Token> tokenize(std::string_view section)
{
    std::vector<Token> tokens;
    while (!section.empty()) {
        std::size_t consumed = 1;
        tokens.push_back(nextToken(section, consumed));
        section.remove_prefix(std::min(consumed, section.size()));
    }
    markMinutes(tokens);
    return tokens;
}

std::string printf1(const char* format, int precision, double value)
{
    std::array<char, 512> buf{};
    const int n = std::snprintf(buf.data(), buf.size(), format, precision, value);
    return n > 0 ? std::string(buf.data(), std::min<std::size_t>(n, buf.size() - 1))
                 : std::string();
}

void stripZeros(std::string& digits)
{
    if (digits.find('.') == std::string::npos) {
        return;
    }
    while (digits.back() == '0') {
        digits.pop_back();
    }
    if (digits.back() == '.') {
        digits.pop_back();
    }
}

// Ten significant digits at most, scientific beyond eleven characters.
std::string general(double value)
{
    const double magnitude = std::fabs(value);
    if (magnitude == 0) {
        return "0";
    }
    std::string out;
    if (magnitude >= 1e11 || magnitude < 1e-9) {
        out = printf1("%.*E", 5, magnitude);
        const auto e = out.find('E');
        std::string mantissa = out.substr(0, e);
        stripZeros(mantissa);
        out = mantissa + out.substr(e);
    } else {
        const int integerDigits =
            magnitude < 1 ? 1 : static_cast<int>(std::floor(std::log10(magnitude))) + 1;
        out = printf1("%.*f", std::max(0, 10 - integerDigits), magnitude);
        stripZeros(out);
    }
    return value < 0 ? "-" + out : out;
}

struct NumberPattern {
    std::string prefix;
    std::string suffix;
    std::size_t integerZeros = 0;
    std::size_t minDecimals = 0;
    std::size_t maxDecimals = 0;
    std::size_t exponentDigits = 0;
    std::string exponentSign;
    int percents = 0;
    int thousandsScale = 0;
    bool grouping = false;
    bool point = false;
    bool digits = false;
    bool general = false;
};

void addDigit(NumberPattern& p, bool zero, int& commas)
{
    if (!p.exponentSign.empty()) {
        ++p.exponentDigits;
    } else if (p.point) {
        ++p.maxDecimals;
        p.minDecimals += zero ? 1 : 0;
    } else {
        p.integerZeros += zero ? 1 : 0;
        p.grouping = p.grouping || (commas > 0 && p.digits);
    }
    commas = 0;
    p.digits = true;
}

std::optional<NumberPattern> numberPattern(const std::vector<Token>& tokens)
{
    NumberPattern p;
    int commas = 0;
    for (const Token& token : tokens) {
        std::string& literals = p.digits ? p.suffix : p.prefix;
        switch (token.kind) {
        case Kind::Zero:
        case Kind::Digit:
            if (!p.suffix.empty()) {
                return std::nullopt; // digits split by text: fractions, phone numbers
            }
            addDigit(p, token.kind == Kind::Zero, commas);
            break;
        case Kind::Comma:
            commas += p.digits ? 1 : 0;
            break;
        case Kind::Point:
            p.point = p.exponentSign.empty();
            break;
        case Kind::Percent:
            ++p.percents;
            literals += token.text;
            break;
        case Kind::Exponent:
            p.exponentSign = token.text;
            break;
        case Kind::General:
        case Kind::Text:
            p.general = true;
            break;
        case Kind::Literal:
            literals += token.text;
            break;
        default:
            return std::nullopt;
        }
    }
    p.thousandsScale = commas;
    p.maxDecimals = std::min<std::size_t>(p.maxDecimals, 30);
    p.integerZeros = std::min<std::size_t>(p.integerZeros, 64);
    return p;
}

std::string groupThousands(const std::string& digits)
{
    std::string out;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) {
            out.push_back(',');
        }
        out.push_back(digits[i]);
    }
    return out;
}

// Halves round away from zero, as spreadsheets do (printf rounds them to even); the nudge
// makes 1.005, stored as 1.00499999999999989..., round up like the decimal it stands for.
double roundHalfAway(double magnitude, std::size_t decimals)
{
    const double scale = std::pow(10.0, static_cast<double>(decimals));
    const double scaled = magnitude * scale;
    if (scaled >= 1e15) {
        return magnitude;
    }
    return std::round(scaled * (1 + 1e-15)) / scale;
}

std::string fixed(double magnitude, const NumberPattern& p)
{
    std::string text =
        printf1("%.*f", static_cast<int>(p.maxDecimals), roundHalfAway(magnitude, p.maxDecimals));
    const auto dot = text.find('.');
    std::string integer = text.substr(0, dot);
    std::string fraction = dot == std::string::npos ? std::string() : text.substr(dot + 1);
    while (fraction.size() > p.minDecimals && fraction.back() == '0') {
        fraction.pop_back();
    }
    if (integer == "0" && p.integerZeros == 0) {
        integer.clear();
    }
    if (integer.size() < p.integerZeros) {
        integer.insert(0, p.integerZeros - integer.size(), '0');
    }
    if (p.grouping) {
        integer = groupThousands(integer);
    }
    return p.point ? integer + "." + fraction : integer;
}

std::string scientific(double magnitude, const NumberPattern& p)
{
    int exponent = magnitude == 0 ? 0 : static_cast<int>(std::floor(std::log10(magnitude)));
    std::string mantissa =
        printf1("%.*f", static_cast<int>(p.maxDecimals), magnitude / std::pow(10.0, exponent));
    if (mantissa.rfind("10", 0) == 0) { // rounded up to the next power of ten
        ++exponent;
        mantissa =
            printf1("%.*f", static_cast<int>(p.maxDecimals), magnitude / std::pow(10.0, exponent));
    }
    std::string digits = std::to_string(std::abs(exponent));
    if (digits.size() < p.exponentDigits) {
        digits.insert(0, std::min<std::size_t>(p.exponentDigits, 8) - digits.size(), '0');
    }
    const char* sign = exponent < 0 ? "-" : (p.exponentSign == "+" ? "+" : "");
    return mantissa + "E" + sign + digits;
}

std::optional<std::string> renderNumber(double value, const std::vector<Token>& tokens,
                                        bool showSign)
{
    const auto p = numberPattern(tokens);
    if (!p) {
        return std::nullopt;
    }
    if (p->general) {
        return p->prefix + general(showSign ? value : std::fabs(value)) + p->suffix;
    }
    if (!p->digits) {
        return p->prefix + p->suffix;
    }
    const double magnitude = std::fabs(value) * std::pow(100.0, std::min(p->percents, 4)) /
                             std::pow(1000.0, std::min(p->thousandsScale, 6));
    if (!std::isfinite(magnitude)) {
        return std::nullopt;
    }
    const std::string number =
        p->exponentSign.empty() ? fixed(magnitude, *p) : scientific(magnitude, *p);
    const bool minus =
        showSign && value < 0 && number.find_first_not_of("0.,") != std::string::npos;
    return (minus ? "-" : "") + p->prefix + number + p->suffix;
}

// --- Dates and times -------------------------------------------------------------------

struct DateTime {
    long year = 1900;
    unsigned month = 1;
    unsigned day = 0;
    unsigned weekday = 0; // 0 = Sunday
    long days = 0;        // the serial's whole days, for elapsed time
    long seconds = 0;     // of the day
};

// Days since 1970-01-01 to a civil date (Howard Hinnant's algorithm).
void civilFromDays(long z, DateTime& d)
{
    z += 719468;
    const long era = (z >= 0 ? z : z - 146096) / 146097;
    const auto doe = static_cast<unsigned long>(z - era * 146097);
    const unsigned long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned long mp = (5 * doy + 2) / 153;
    d.day = static_cast<unsigned>(doy - (153 * mp + 2) / 5 + 1);
    d.month = static_cast<unsigned>(mp < 10 ? mp + 3 : mp - 9);
    d.year = static_cast<long>(yoe) + era * 400 + (d.month <= 2 ? 1 : 0);
}

std::optional<DateTime> dateTime(double serial, bool date1904)
{
    if (!(serial >= 0 && serial < 2958466)) { // up to 9999-12-31
        return std::nullopt;
    }
    DateTime d;
    d.days = static_cast<long>(serial);
    d.seconds = std::lround((serial - static_cast<double>(d.days)) * 86400);
    if (d.seconds >= 86400) {
        ++d.days;
        d.seconds -= 86400;
    }
    // 1900 system: day 1 is 1900-01-01 and day 60 the 29 February 1900 that never was.
    constexpr long day1900 = -25568; // 1899-12-31, day 0, from 1970-01-01
    constexpr long day1904 = -24107; // 1904-01-01, day 0
    const long unix = date1904 ? day1904 + d.days : day1900 + d.days - (d.days > 60 ? 1 : 0);
    civilFromDays(unix, d);
    d.weekday = static_cast<unsigned>(((unix % 7) + 11) % 7); // 1970-01-01 was a Thursday
    if (!date1904 && d.days == 60) {
        d.month = 2;
        d.day = 29;
    } else if (!date1904 && d.days == 0) {
        d.year = 1900;
        d.month = 1;
        d.day = 0;
    }
    return d;
}

constexpr std::array<std::string_view, 12> monthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 7> dayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};

std::string padded(long n, std::size_t width)
{
    std::string digits = std::to_string(n);
    if (digits.size() < width) {
        digits.insert(0, width - digits.size(), '0');
    }
    return digits;
}

std::string name(std::string_view full, std::size_t width)
{
    return std::string(width == 3 ? full.substr(0, 3) : full);
}

std::string dateField(const Token& t, const DateTime& d, bool twelveHour)
{
    const long hour = d.seconds / 3600;
    switch (t.kind) {
    case Kind::Year:
        return t.width <= 2 ? padded(d.year % 100, 2) : padded(d.year, 4);
    case Kind::Month:
        if (t.width >= 3) {
            const std::string_view month = monthNames[(d.month - 1) % 12];
            return t.width == 5 ? std::string(month.substr(0, 1)) : name(month, t.width);
        }
        return padded(d.month, t.width);
    case Kind::Day:
        return t.width >= 3 ? name(dayNames[d.weekday], t.width) : padded(d.day, t.width);
    case Kind::Hour:
        return padded(twelveHour ? (hour + 11) % 12 + 1 : hour, std::min<std::size_t>(t.width, 2));
    case Kind::Minute:
        return padded(d.seconds / 60 % 60, std::min<std::size_t>(t.width, 2));
    case Kind::Second:
        return padded(d.seconds % 60, std::min<std::size_t>(t.width, 2));
    case Kind::AmPm:
        return std::string(hour < 12 ? "AM" : "PM").substr(0, t.width);
    case Kind::ElapsedHours:
        return padded(d.days * 24 + hour, t.width);
    case Kind::ElapsedMinutes:
        return padded(d.days * 1440 + d.seconds / 60, t.width);
    case Kind::ElapsedSeconds:
        return padded(d.days * 86400 + d.seconds, t.width);
    default:
        return t.text;
    }
}

std::optional<std::string> renderDate(double serial, const std::vector<Token>& tokens,
                                      bool date1904)
{
    const auto d = dateTime(serial, date1904);
    if (!d) {
        return std::nullopt;
    }
    const bool twelveHour = std::any_of(tokens.begin(), tokens.end(),
                                        [](const Token& t) { return t.kind == Kind::AmPm; });
    std::string out;
    for (const Token& t : tokens) {
        if (t.kind == Kind::Literal || isDateKind(t.kind) || t.kind == Kind::AmPm) {
            out += dateField(t, *d, twelveHour);
        } else if (t.kind == Kind::Point || t.kind == Kind::Comma) {
            out += t.kind == Kind::Point ? "." : ",";
        } else {
            return std::nullopt; // fractions of seconds and the like
        }
    }
    return out;
}

} // namespace

std::string_view builtinNumberFormat(int id)
{
    switch (id) {
    case 0:
        return "General";
    case 1:
        return "0";
    case 2:
        return "0.00";
    case 3:
        return "#,##0";
    case 4:
        return "#,##0.00";
    case 9:
        return "0%";
    case 10:
        return "0.00%";
    case 11:
        return "0.00E+00";
    case 14:
        return "m/d/yyyy";
    case 15:
        return "d-mmm-yy";
    case 16:
        return "d-mmm";
    case 17:
        return "mmm-yy";
    case 18:
        return "h:mm AM/PM";
    case 19:
        return "h:mm:ss AM/PM";
    case 20:
        return "h:mm";
    case 21:
        return "h:mm:ss";
    case 22:
        return "m/d/yyyy h:mm";
    case 37:
        return "#,##0 ;(#,##0)";
    case 38:
        return "#,##0 ;[Red](#,##0)";
    case 39:
        return "#,##0.00;(#,##0.00)";
    case 40:
        return "#,##0.00;[Red](#,##0.00)";
    case 45:
        return "mm:ss";
    case 46:
        return "[h]:mm:ss";
    case 49:
        return "@";
    default:
        return {};
    }
}

std::optional<std::string> formatNumber(double value, std::string_view code, bool date1904)
{
    if (!std::isfinite(value) || code.empty()) {
        return std::nullopt;
    }
    const std::vector<std::string_view> sections = splitSections(code);
    // One section for all; two: positive and zero, negative; three: positive, negative, zero.
    std::size_t chosen = 0;
    if (value < 0 && sections.size() >= 2) {
        chosen = 1;
    } else if (value == 0 && sections.size() >= 3) {
        chosen = 2;
    }
    const std::vector<Token> tokens = tokenize(sections[chosen]);
    const bool date = std::any_of(tokens.begin(), tokens.end(),
                                  [](const Token& t) { return isDateKind(t.kind); });
    if (date) {
        return renderDate(value, tokens, date1904);
    }
    return renderNumber(value, tokens, chosen == 0);
}

} // namespace tallyvox::indexer::readers
