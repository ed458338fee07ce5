#include "text/encodings.hpp"

#include <algorithm>
#include <array>
#include <cstring>

#include "text/text.hpp"

namespace vornelt {

namespace {

#include "text/charsets.inc"

// Mac OS Roman byte of a code point, or '?' when it has none.
class MacRomanTable {
public:
    MacRomanTable() {
        for (int b = 0; b < 128; ++b) pairs_[size_t(b)] = {kMacRomanHigh[b], char(0x80 + b)};
        std::sort(pairs_.begin(), pairs_.end(), [](auto& a, auto& b) { return a.first < b.first; });
    }
    char Byte(char32_t c) const {
        if (c < 0x80) return char(c);
        auto it =
            std::lower_bound(pairs_.begin(), pairs_.end(), c, [](const auto& p, char32_t v) { return p.first < v; });
        return (it != pairs_.end() && it->first == c) ? it->second : '?';
    }

private:
    std::array<std::pair<char32_t, char>, 128> pairs_{};
};

const MacRomanTable& MacRoman() {
    static const MacRomanTable table;
    return table;
}

}  // namespace

std::string DecodeWindowsLatin1(std::string bytes) {
    if (IsAscii(bytes)) return bytes;
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (unsigned char b : bytes) {
        if (b < 0x80)
            out.push_back(char(b));
        else if (b < 0xA0)
            AppendChar(out, kWindowsLatin1High[b - 0x80]);
        else
            AppendChar(out, b);
    }
    return out;
}

std::string DecodeMacRoman(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        if (b < 0x80)
            text.push_back(c);
        else
            AppendChar(text, kMacRomanHigh[b - 0x80]);
    }
    return text;
}

std::string EncodeMacRoman(std::string_view text) {
    if (IsAscii(text)) return std::string(text);
    std::string out;
    out.reserve(text.size());
    const MacRomanTable& table = MacRoman();
    for (size_t i = 0; i < text.size();) out.push_back(table.Byte(NextChar(text, i)));
    return out;
}

void AppendListForSaving(std::string& out, std::string_view text) {
    // A list of ASCII with CR line ends alone, as the writer makes it: every line is copied
    // whole and its CR becomes CR LF; the control characters a list may still hold are ASCII
    // and stay as they are.
    if (IsAscii(text) && std::memchr(text.data(), '\n', text.size()) == nullptr) {
        const size_t start = out.size();
        out.resize(start + text.size() + size_t(std::count(text.begin(), text.end(), '\r')));
        char* w = out.data() + start;
        const char* p = text.data();
        const char* const end = p + text.size();
        while (p < end) {
            const char* cr = static_cast<const char*>(std::memchr(p, '\r', size_t(end - p)));
            const char* const stop = cr ? cr : end;
            std::memcpy(w, p, size_t(stop - p));
            w += stop - p;
            if (!cr) break;
            *w++ = '\r';
            *w++ = '\n';
            p = cr + 1;
        }
        return;
    }
    // Otherwise written through a pointer into room for the worst case (every line end two
    // bytes), then cut to what was written; a run of plain characters is copied whole.
    const size_t lineEnds =
        size_t(std::count(text.begin(), text.end(), '\r') + std::count(text.begin(), text.end(), '\n'));
    const size_t start = out.size();
    out.resize(start + text.size() + lineEnds);
    char* w = out.data() + start;
    const char* p = text.data();
    const char* const end = p + text.size();
    const MacRomanTable& table = MacRoman();
    while (p < end) {
        const char* run = p;
        while (p < end && static_cast<unsigned char>(*p) >= 0x20 && static_cast<unsigned char>(*p) < 0x80) ++p;
        std::memcpy(w, run, size_t(p - run));
        w += p - run;
        if (p == end) break;
        const unsigned char b = static_cast<unsigned char>(*p);
        if (b == '\r') {
            *w++ = '\r';
            *w++ = '\n';
            p += (p + 1 < end && p[1] == '\n') ? 2 : 1;
        } else if (b == '\n') {
            *w++ = '\r';
            *w++ = '\n';
            ++p;
        } else if (b < 0x80) {
            *w++ = char(b);
            ++p;
        } else {
            size_t i = size_t(p - text.data());
            *w++ = table.Byte(NextChar(text, i));
            p = text.data() + i;
        }
    }
    out.resize(size_t(w - out.data()));
}

std::string EncodeListForSaving(std::string_view text) {
    std::string out;
    AppendListForSaving(out, text);
    return out;
}

void EncodeListForSaving(std::string_view text, const std::function<void(std::string_view)>& write, size_t pieceSize) {
    if (pieceSize == 0) pieceSize = 1;
    size_t from = 0;
    while (from < text.size()) {
        size_t to = std::min(text.size(), from + pieceSize);
        while (to < text.size() && ((text[to] & 0xC0) == 0x80 || (text[to] == '\n' && text[to - 1] == '\r'))) ++to;
        write(EncodeListForSaving(text.substr(from, to - from)));
        from = to;
    }
}

std::string CharactersNotInMacRoman(std::string_view text) {
    std::string missing;
    if (IsAscii(text)) return missing;
    const MacRomanTable& table = MacRoman();
    for (size_t i = 0; i < text.size();) {
        const size_t start = i;
        const char32_t c = NextChar(text, i);
        if (c < 0x80 || table.Byte(c) != '?') continue;
        const std::string_view one = text.substr(start, i - start);
        if (missing.find(one) == std::string::npos) missing.append(one);
    }
    return missing;
}

LooksLike GuessEncoding(std::string_view bytes) {
    auto at = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (bytes.size() >= 2 && ((at(0) == 0xFF && at(1) == 0xFE) || (at(0) == 0xFE && at(1) == 0xFF)))
        return LooksLike::Utf16;
    if (bytes.size() >= 3 && at(0) == 0xEF && at(1) == 0xBB && at(2) == 0xBF) return LooksLike::Utf8;
    // UTF-16 text of ASCII letters: NUL in every even or every odd byte of the start.
    const size_t probe = std::min<size_t>(bytes.size() & ~size_t(1), 512);
    if (probe >= 8) {
        size_t evenNul = 0, oddNul = 0;
        for (size_t i = 0; i < probe; i += 2) {
            evenNul += at(i) == 0;
            oddNul += at(i + 1) == 0;
        }
        if (evenNul * 10 >= probe / 2 * 9 || oddNul * 10 >= probe / 2 * 9) return LooksLike::Utf16;
    }
    if (IsAscii(bytes)) return LooksLike::Ascii;
    size_t sequences = 0;
    for (size_t i = 0; i < bytes.size();) {
        const unsigned char b = at(i);
        if (b < 0x80) {
            ++i;
            continue;
        }
        size_t n = b >= 0xC2 && b <= 0xDF ? 1 : b >= 0xE0 && b <= 0xEF ? 2 : b >= 0xF0 && b <= 0xF4 ? 3 : 0;
        if (n == 0 || i + n >= bytes.size()) return LooksLike::Latin1;
        for (size_t k = 1; k <= n; ++k)
            if ((at(i + k) & 0xC0) != 0x80) return LooksLike::Latin1;
        ++sequences;
        i += n + 1;
    }
    return sequences > 0 ? LooksLike::Utf8 : LooksLike::Latin1;
}

}  // namespace vornelt
