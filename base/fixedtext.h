#pragma once
// Fixed texts of N single-byte characters, as the case and rate files hold
// them: assigning pads with spaces on the right and cuts a longer text to N; a
// text never assigned holds N NUL characters. Bytes are Latin-1 and read back
// exactly as written.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace rw {

template<std::size_t N>
class FixedText {
public:
    static constexpr std::size_t kSize = N;

    FixedText() { b_.fill('\0'); }
    FixedText(std::string_view s) { assign(s); }  // NOLINT: texts read naturally as literals

    void assign(std::string_view s)
    {
        const std::size_t n = s.size() < N ? s.size() : N;
        for (std::size_t i = 0; i < n; ++i)
            b_[i] = s[i];
        for (std::size_t i = n; i < N; ++i)
            b_[i] = ' ';
    }
    FixedText& operator=(std::string_view s)
    {
        assign(s);
        return *this;
    }

    // All N bytes, NULs and padding included.
    std::string_view view() const { return std::string_view(b_.data(), N); }
    std::string str() const { return std::string(view()); }
    // All N characters as a list or a report shows them: a character never
    // assigned (NUL) shows as a blank.
    std::string shown() const
    {
        std::string s = str();
        for (char& ch : s)
            if (ch == '\0')
                ch = ' ';
        return s;
    }
    // The text without trailing blanks and NULs.
    std::string trimmed() const
    {
        std::size_t n = N;
        while (n > 0 && (b_[n - 1] == ' ' || b_[n - 1] == '\0'))
            --n;
        return std::string(b_.data(), n);
    }
    // Never assigned: the first character is NUL.
    bool isUnset() const { return b_[0] == '\0'; }
    // Assigned the empty text: all blanks.
    bool isBlank() const
    {
        for (char c : b_)
            if (c != ' ')
                return false;
        return true;
    }
    // Compares all N bytes with s padded to N (s longer than N never matches).
    bool is(std::string_view s) const
    {
        if (s.size() > N)
            return false;
        for (std::size_t i = 0; i < N; ++i) {
            const char want = i < s.size() ? s[i] : ' ';
            if (b_[i] != want)
                return false;
        }
        return true;
    }

    char* data() { return b_.data(); }
    const char* data() const { return b_.data(); }

    friend bool operator==(const FixedText&, const FixedText&) = default;

private:
    std::array<char, N> b_;
};

// Flags are 16-bit integers: -1 yes, 0 no; any non-zero value reads as yes.
using Flag = std::int16_t;
inline constexpr Flag kYes = -1;
inline constexpr Flag kNo = 0;
inline constexpr bool IsYes(Flag f)
{
    return f != 0;
}
inline constexpr Flag ToFlag(bool b)
{
    return b ? kYes : kNo;
}

}  // namespace rw
