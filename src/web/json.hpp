#pragma once
// Just enough JSON for what the page reads: objects, arrays, strings, numbers and booleans.

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace vornelt::web {

class Json {
public:
    Json& Open(char bracket) {
        Separate();
        text_ += bracket;
        first_ = true;
        return *this;
    }
    Json& Close(char bracket) {
        text_ += bracket;
        first_ = false;
        return *this;
    }
    Json& Key(std::string_view key) {
        String(key);
        text_ += ':';
        first_ = true;
        return *this;
    }
    Json& String(std::string_view s) {
        Separate();
        text_ += '"';
        for (char c : s) {
            switch (c) {
                case '"': text_ += "\\\""; break;
                case '\\': text_ += "\\\\"; break;
                case '\n': text_ += "\\n"; break;
                case '\r': text_ += "\\r"; break;
                case '\t': text_ += "\\t"; break;
                default:
                    if (static_cast<unsigned char>(c) < 0x20) {
                        char u[8];
                        std::snprintf(u, sizeof u, "\\u%04x", unsigned(c));
                        text_ += u;
                    } else {
                        text_ += c;
                    }
            }
        }
        text_ += '"';
        return *this;
    }
    Json& Number(int64_t n) {
        Separate();
        text_ += std::to_string(n);
        return *this;
    }
    Json& Bool(bool b) {
        Separate();
        text_ += b ? "true" : "false";
        return *this;
    }
    Json& Null() {
        Separate();
        text_ += "null";
        return *this;
    }
    // Text as it stands, not as a value.
    Json& Raw(std::string_view text) {
        text_ += text;
        return *this;
    }
    const std::string& Text() const noexcept { return text_; }
    void Clear() {
        text_.clear();
        first_ = true;
    }

private:
    void Separate() {
        if (!first_) text_ += ',';
        first_ = false;
    }

    std::string text_;
    bool first_ = true;
};

}  // namespace vornelt::web
