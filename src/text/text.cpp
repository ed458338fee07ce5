#include "text/text.hpp"

#include <algorithm>
#include <cerrno>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace vornelt {

namespace {

struct CaseMapping {
    char32_t from;
    char32_t to;
};
struct UpperMapping {
    char32_t from;
    char32_t to[3];
};
#include "text/unicode_case.inc"

inline bool IsContinuation(unsigned char b) { return (b & 0xC0) == 0x80; }

inline char AsciiLower(char c) { return (c >= 'A' && c <= 'Z') ? char(c + 32) : c; }

// Byte offset of the character with 0-based index `chars`, or s.size() past the end.
size_t ByteOffset(TextView s, int64_t chars) {
    if (chars <= 0) return 0;
    size_t i = 0;
    while (chars > 0 && i < s.size()) {
        if (static_cast<unsigned char>(s[i]) < 0x80) {
            ++i;
        } else {
            NextChar(s, i);
        }
        --chars;
    }
    return i;
}

// The characters of a text, each folded to its one-character lower case.
std::u32string Folded(TextView s) {
    std::u32string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size();) out.push_back(FoldChar(NextChar(s, i)));
    return out;
}

// Byte ranges of the characters of s, so that a position found in folded text maps back.
std::vector<size_t> CharStarts(TextView s) {
    std::vector<size_t> starts;
    starts.reserve(s.size() + 1);
    for (size_t i = 0; i < s.size();) {
        starts.push_back(i);
        NextChar(s, i);
    }
    starts.push_back(s.size());
    return starts;
}

bool AsciiEqualFold(const char* a, const char* b, size_t n) {
    for (size_t k = 0; k < n; ++k)
        if (AsciiLower(a[k]) != AsciiLower(b[k])) return false;
    return true;
}

// Length of the leading number of s (sign, digits, one point, at least one digit), 0 if none.
size_t NumberPrefix(TextView s, bool& hasNonZeroIntegerDigit) {
    size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    bool point = false;
    size_t digits = 0;
    hasNonZeroIntegerDigit = false;
    for (; i < s.size(); ++i) {
        char c = s[i];
        if (c >= '0' && c <= '9') {
            ++digits;
            if (!point && c != '0') hasNonZeroIntegerDigit = true;
        } else if (c == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (digits == 0) return 0;
    // A trailing point belongs to the number ("5." is 5).
    return i;
}

}  // namespace

// ---- characters ---------------------------------------------------------------------

bool IsAsciiLong(TextView s) noexcept {
    const unsigned char* p = reinterpret_cast<const unsigned char*>(s.data());
    size_t n = s.size();
    size_t i = 0;
    // Four words at a time, looked at together.
    for (; i + 32 <= n; i += 32) {
        uint64_t w[4];
        std::memcpy(w, p + i, 32);
        if ((w[0] | w[1] | w[2] | w[3]) & 0x8080808080808080ULL) return false;
    }
    for (; i + 8 <= n; i += 8) {
        uint64_t w;
        std::memcpy(&w, p + i, 8);
        if (w & 0x8080808080808080ULL) return false;
    }
    for (; i < n; ++i)
        if (p[i] & 0x80) return false;
    return true;
}

char32_t NextChar(TextView s, size_t& i) noexcept {
    const unsigned char b0 = static_cast<unsigned char>(s[i]);
    if (b0 < 0x80) {
        ++i;
        return b0;
    }
    auto cont = [&](size_t k) -> int {
        if (i + k >= s.size()) return -1;
        unsigned char b = static_cast<unsigned char>(s[i + k]);
        return IsContinuation(b) ? (b & 0x3F) : -1;
    };
    if (b0 >= 0xC2 && b0 <= 0xDF) {
        int c1 = cont(1);
        if (c1 >= 0) {
            i += 2;
            return (char32_t(b0 & 0x1F) << 6) | char32_t(c1);
        }
    } else if (b0 >= 0xE0 && b0 <= 0xEF) {
        int c1 = cont(1), c2 = cont(2);
        if (c1 >= 0 && c2 >= 0) {
            char32_t c = (char32_t(b0 & 0x0F) << 12) | (char32_t(c1) << 6) | char32_t(c2);
            if (c >= 0x800 && (c < 0xD800 || c > 0xDFFF)) {
                i += 3;
                return c;
            }
        }
    } else if (b0 >= 0xF0 && b0 <= 0xF4) {
        int c1 = cont(1), c2 = cont(2), c3 = cont(3);
        if (c1 >= 0 && c2 >= 0 && c3 >= 0) {
            char32_t c = (char32_t(b0 & 0x07) << 18) | (char32_t(c1) << 12) | (char32_t(c2) << 6) | char32_t(c3);
            if (c >= 0x10000 && c <= 0x10FFFF) {
                i += 4;
                return c;
            }
        }
    }
    ++i;
    return 0xFFFD;
}

void AppendChar(std::string& out, char32_t c) {
    if (c < 0x80) {
        out.push_back(char(c));
    } else if (c < 0x800) {
        out.push_back(char(0xC0 | (c >> 6)));
        out.push_back(char(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(char(0xE0 | (c >> 12)));
        out.push_back(char(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(char(0x80 | (c & 0x3F)));
    } else {
        out.push_back(char(0xF0 | (c >> 18)));
        out.push_back(char(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(char(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(char(0x80 | (c & 0x3F)));
    }
}

Text SanitizeUtf8(TextView s) {
    if (IsAscii(s)) return Text(s);
    Text out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size();) AppendChar(out, NextChar(s, i));
    return out;
}

char32_t FoldChar(char32_t c) noexcept {
    if (c < 0x80) return (c >= 'A' && c <= 'Z') ? c + 32 : c;
    const auto* end = std::end(kSimpleLower);
    const auto* it =
        std::lower_bound(std::begin(kSimpleLower), end, c, [](const CaseMapping& m, char32_t v) { return m.from < v; });
    return (it != end && it->from == c) ? it->to : c;
}

// ---- cutting ------------------------------------------------------------------------

int64_t LenOfUtf8(TextView s) noexcept {
    int64_t n = 0;
    for (size_t i = 0; i < s.size(); ++n) NextChar(s, i);
    return n;
}

TextView Mid(TextView s, int64_t start) noexcept {
    if (start < 1) start = 1;
    return s.substr(ByteOffset(s, start - 1));
}

TextView Mid(TextView s, int64_t start, int64_t count) noexcept {
    if (count <= 0) return {};
    TextView rest = Mid(s, start);
    return rest.substr(0, ByteOffset(rest, count));
}

TextView Left(TextView s, int64_t count) noexcept {
    if (count <= 0) return {};
    return s.substr(0, ByteOffset(s, count));
}

TextView Right(TextView s, int64_t count) noexcept {
    if (count <= 0) return {};
    if (IsAscii(s)) return count >= int64_t(s.size()) ? s : s.substr(s.size() - size_t(count));
    int64_t n = Len(s);
    if (count >= n) return s;
    return s.substr(ByteOffset(s, n - count));
}

TextView Trim(TextView s) noexcept { return RTrim(LTrim(s)); }

TextView RTrim(TextView s) noexcept {
    size_t e = s.size();
    while (e > 0 && s[e - 1] == ' ') --e;
    return s.substr(0, e);
}

TextView LTrim(TextView s) noexcept {
    size_t b = 0;
    while (b < s.size() && s[b] == ' ') ++b;
    return s.substr(b);
}

// ---- searching and comparing --------------------------------------------------------

int64_t InStr(int64_t start, TextView source, TextView find) noexcept {
    if (find.empty()) return 0;
    if (start < 1) start = 1;
    if (IsAscii(source) && IsAscii(find)) {
        if (size_t(start - 1) > source.size() || find.size() > source.size()) return 0;
        const char f0 = AsciiLower(find[0]);
        for (size_t p = size_t(start - 1); p + find.size() <= source.size(); ++p) {
            if (AsciiLower(source[p]) == f0 && AsciiEqualFold(source.data() + p + 1, find.data() + 1, find.size() - 1))
                return int64_t(p) + 1;
        }
        return 0;
    }
    const std::u32string hay = Folded(source);
    const std::u32string needle = Folded(find);
    if (size_t(start - 1) > hay.size()) return 0;
    size_t pos = hay.find(needle, size_t(start - 1));
    return pos == std::u32string::npos ? 0 : int64_t(pos) + 1;
}

bool EqualsCI(TextView a, TextView b) noexcept {
    if (IsAscii(a) && IsAscii(b)) return a.size() == b.size() && AsciiEqualFold(a.data(), b.data(), a.size());
    size_t i = 0, j = 0;
    while (i < a.size() && j < b.size())
        if (FoldChar(NextChar(a, i)) != FoldChar(NextChar(b, j))) return false;
    return i == a.size() && j == b.size();
}

bool StartsWithCI(TextView s, TextView literal) noexcept {
    if (literal.empty()) return false;  // a search for nothing finds nothing
    if (IsAscii(literal) && s.size() >= literal.size() && IsAscii(s.substr(0, literal.size())))
        return AsciiEqualFold(s.data(), literal.data(), literal.size());
    size_t i = 0, j = 0;
    while (j < literal.size()) {
        if (i >= s.size()) return false;
        if (FoldChar(NextChar(s, i)) != FoldChar(NextChar(literal, j))) return false;
    }
    return true;
}

Text ReplaceAll(TextView s, TextView find, TextView replacement) {
    if (find.empty()) return Text(s);
    Text out;
    out.reserve(s.size());
    if (IsAscii(s) && IsAscii(find)) {
        size_t from = 0;
        for (int64_t p = InStr(1, s, find); p != 0; p = InStr(p + int64_t(find.size()), s, find)) {
            out.append(s.substr(from, size_t(p - 1) - from));
            out.append(replacement);
            from = size_t(p - 1) + find.size();
        }
        out.append(s.substr(from));
        return out;
    }
    const std::u32string hay = Folded(s);
    const std::u32string needle = Folded(find);
    const std::vector<size_t> starts = CharStarts(s);
    size_t fromChar = 0;
    for (size_t p = hay.find(needle); p != std::u32string::npos; p = hay.find(needle, p + needle.size())) {
        out.append(s.substr(starts[fromChar], starts[p] - starts[fromChar]));
        out.append(replacement);
        fromChar = p + needle.size();
    }
    out.append(s.substr(starts[fromChar]));
    return out;
}

Text Uppercase(TextView s) {
    Text out;
    out.reserve(s.size());
    if (IsAscii(s)) {
        for (char c : s) out.push_back((c >= 'a' && c <= 'z') ? char(c - 32) : c);
        return out;
    }
    for (size_t i = 0; i < s.size();) {
        char32_t c = NextChar(s, i);
        if (c < 0x80) {
            out.push_back((c >= 'a' && c <= 'z') ? char(c - 32) : char(c));
            continue;
        }
        const auto* end = std::end(kFullUpper);
        const auto* it = std::lower_bound(std::begin(kFullUpper), end, c,
                                          [](const UpperMapping& m, char32_t v) { return m.from < v; });
        if (it != end && it->from == c) {
            for (char32_t u : it->to)
                if (u) AppendChar(out, u);
        } else {
            AppendChar(out, c);
        }
    }
    return out;
}

// ---- numbers ------------------------------------------------------------------------

namespace {

// Unsigned decimal digits with at most one point ("025.5", "5.", ".5") as the nearest double,
// ties to even, out of range giving infinity or 0. Without floating-point from_chars, which
// not every standard library has, and without the locale's decimal point.
double DecimalToDouble(TextView number) noexcept {
    // The significant digits as an integer and the power of ten that scales them. Every
    // halfway point between two doubles has at most 768 significant digits, so past kKept
    // digits a single 1 standing for any nonzero rest rounds as the rest itself does.
    constexpr size_t kKept = 780;
    char digits[kKept + 32];
    size_t count = 0;
    int64_t exponent = 0;
    bool point = false, nonZeroRest = false;
    for (char c : number) {
        if (c == '.') {
            point = true;
        } else if (count < kKept) {
            if (count > 0 || c != '0') digits[count++] = c;
            if (point) --exponent;
        } else {
            if (c != '0') nonZeroRest = true;
            if (!point) ++exponent;
        }
    }
    if (count == 0) return 0.0;
    if (nonZeroRest) {
        digits[count++] = '1';
        --exponent;
    }
    // Small enough that the digits and the power of ten are both exact doubles: one
    // multiplication or division then rounds once, correctly.
    static constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                              1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    if (FLT_EVAL_METHOD == 0 && count <= 16 && exponent >= -22 && exponent <= 22) {
        uint64_t m = 0;
        for (size_t i = 0; i < count; ++i) m = m * 10 + uint64_t(digits[i] - '0');
        if (m <= (uint64_t(1) << 53))
            return exponent < 0 ? double(m) / kPowersOfTen[-exponent] : double(m) * kPowersOfTen[exponent];
    }
    // Otherwise strtod, which rounds correctly, given the digits and an exponent: no decimal
    // point, so no locale comes into it.
    char* end = digits + count;
    *end++ = 'e';
    end = std::to_chars(end, digits + sizeof digits - 1, exponent).ptr;
    *end = '\0';
    int savedErrno = errno;
    double value = std::strtod(digits, nullptr);
    errno = savedErrno;
    return value;
}

// Digits d1 d2 ... and the power of ten of d1, read back as a double.
double ReadBack(const std::string& digits, int exponent) {
    std::string text = digits.substr(0, 1) + "." + digits.substr(1) + "e" + std::to_string(exponent);
    return std::strtod(text.c_str(), nullptr);
}

// The digits one unit up or down in the last place, the power of ten moving along.
void Step(std::string& digits, int& exponent, int by) {
    size_t i = digits.size();
    while (i-- > 0) {
        char& c = digits[i];
        if (by > 0 ? c < '9' : c > '0') {
            c = char(c + by);
            break;
        }
        c = by > 0 ? '0' : '9';
    }
    if (by > 0 && digits[0] == '0') {  // 99 + 1: 10 at the next power
        digits.insert(digits.begin(), '1');
        digits.pop_back();
        ++exponent;
    } else if (by < 0 && digits[0] == '0') {  // 10 - 1: 99 at the power below
        digits.erase(digits.begin());
        digits.push_back('9');
        --exponent;
    }
}

// The shortest text that reads back as d, in the form std::to_chars(first, last, d) gives:
// of the shortest digits, the nearest; written plain or with an exponent, whichever is
// shorter (plain when both are as long).
std::string ShortestText(double d) {
    if (d == 0) return std::signbit(d) ? "-0" : "0";
    const double a = std::fabs(d);
    std::string digits;
    int exponent = 0;
    for (int precision = 0; precision < 17; ++precision) {
        char buf[40];
        std::snprintf(buf, sizeof buf, "%.*e", precision, a);
        const char* p = buf;
        digits.clear();
        for (; *p != 'e'; ++p)
            if (*p != '.') digits += *p;
        exponent = std::atoi(p + 1);
        if (std::strtod(buf, nullptr) == a) break;
        // Next to a power of two the doubles below lie closer together than those above: the
        // nearest digits may miss while their neighbour on the far side reads back.
        bool found = false;
        for (int by : {1, -1}) {
            std::string near = digits;
            int e = exponent;
            Step(near, e, by);
            if (ReadBack(near, e) == a) {
                digits = near, exponent = e, found = true;
                break;
            }
        }
        if (found) break;
    }
    const int n = int(digits.size());
    std::string scientific = digits.substr(0, 1);
    if (n > 1) scientific += "." + digits.substr(1);
    const std::string power = std::to_string(std::abs(exponent));
    scientific += exponent < 0 ? "e-" : "e+";
    if (power.size() < 2) scientific += '0';
    scientific += power;
    std::string fixed;
    if (exponent < 0) {
        fixed = "0." + std::string(size_t(-exponent - 1), '0') + digits;
    } else if (n <= exponent + 1) {
        // A whole number: every text of its digits has the same length, and the exact one is
        // the nearest.
        char whole[320];
        std::snprintf(whole, sizeof whole, "%.0f", a);
        fixed = whole;
    } else {
        fixed = digits.substr(0, size_t(exponent + 1)) + "." + digits.substr(size_t(exponent + 1));
    }
    return (d < 0 ? "-" : "") + (fixed.size() <= scientific.size() ? fixed : scientific);
}

}  // namespace

double Val(TextView s) noexcept {
    // Plain digits alone, as an event number or a duration is written: exact as an integer.
    if (!s.empty() && s.size() <= 15) {
        uint64_t v = 0;
        size_t k = 0;
        while (k < s.size() && s[k] >= '0' && s[k] <= '9') v = v * 10 + uint64_t(s[k++] - '0');
        if (k == s.size()) return double(v);
    }
    bool nonZero = false;
    size_t n = NumberPrefix(s, nonZero);
    if (n == 0) return 0.0;
    bool negative = s[0] == '-';
    size_t b = (s[0] == '+' || s[0] == '-') ? 1 : 0;
    double value = DecimalToDouble(s.substr(b, n - b));
    return negative ? -value : value;
}

bool IsNumeric(TextView s) noexcept {
    TextView t = Trim(s);
    if (t.empty()) return false;
    bool nonZero = false;
    return NumberPrefix(t, nonZero) == t.size();
}

int32_t ToInt32(double d) noexcept {
    if (!std::isfinite(d)) return 0;
    double t = std::trunc(d);
    if (t >= -2147483648.0 && t <= 2147483647.0) return int32_t(t);
    double r = std::fmod(t, 4294967296.0);
    if (r < 0) r += 4294967296.0;
    return int32_t(uint32_t(r));
}

Text Str(double d) {
    if (std::isnan(d)) return "NAN";
    if (std::isinf(d)) return d < 0 ? "-INF" : "INF";
    if (d == std::trunc(d) && std::fabs(d) < 1e15) return std::to_string(int64_t(d));
    // Not std::to_chars, which some standard libraries lack for floating point: the same text.
    return ShortestText(d);
}

Text Format(int64_t value, TextView pattern) {
    uint64_t magnitude = value < 0 ? uint64_t(0) - uint64_t(value) : uint64_t(value);
    Text digits = std::to_string(magnitude);
    size_t zeros = size_t(std::count(pattern.begin(), pattern.end(), '0'));
    if (zeros == pattern.size() && digits.size() < zeros) digits.insert(0, zeros - digits.size(), '0');
    return value < 0 ? "-" + digits : digits;
}

// ---- splitting ----------------------------------------------------------------------

std::vector<TextView> Split(TextView s, TextView delimiter) {
    std::vector<TextView> pieces;
    if (delimiter.empty()) {
        pieces.push_back(s);
        return pieces;
    }
    size_t from = 0;
    for (size_t p = s.find(delimiter); p != TextView::npos; p = s.find(delimiter, from)) {
        pieces.push_back(s.substr(from, p - from));
        from = p + delimiter.size();
    }
    pieces.push_back(s.substr(from));
    return pieces;
}

}  // namespace vornelt
