#include "shell/settings.h"

#include "base/binio.h"
#include "base/fault.h"
#include "base/numtext.h"

#include <optional>
#include <vector>

namespace rw {

namespace {

struct Line {
    std::string text;  // without its line ending
    std::string ending;  // "\n", "\r\n" or "" (a last line without one)
};

std::vector<Line> splitLines(const std::vector<char>& bytes)
{
    std::vector<Line> lines;
    std::string cur;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char ch = bytes[i];
        if (ch == '\n') {
            if (!cur.empty() && cur.back() == '\r') {
                cur.pop_back();
                lines.push_back({cur, "\r\n"});
            } else {
                lines.push_back({cur, "\n"});
            }
            cur.clear();
        } else {
            cur += ch;
        }
    }
    if (!cur.empty())
        lines.push_back({cur, ""});
    return lines;
}

bool sameName(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        char x = a[i], y = b[i];
        if (x >= 'A' && x <= 'Z')
            x = static_cast<char>(x - 'A' + 'a');
        if (y >= 'A' && y <= 'Z')
            y = static_cast<char>(y - 'A' + 'a');
        if (x != y)
            return false;
    }
    return true;
}

// "[Name]" -> Name; nullopt for any other line.
std::optional<std::string_view> sectionName(std::string_view line)
{
    line = TrimBlanks(line);
    if (line.size() < 2 || line.front() != '[')
        return std::nullopt;
    const auto close = line.find(']');
    if (close == std::string_view::npos)
        return std::nullopt;
    return TrimBlanks(line.substr(1, close - 1));
}

struct KeyValue {
    std::string_view key, value;
};

std::optional<KeyValue> keyValue(std::string_view line)
{
    const std::string_view t = TrimBlanks(line);
    if (t.empty() || t.front() == ';' || t.front() == '[')
        return std::nullopt;
    const auto eq = line.find('=');
    if (eq == std::string_view::npos)
        return std::nullopt;
    return KeyValue{TrimBlanks(line.substr(0, eq)), TrimBlanks(line.substr(eq + 1))};
}

// Where a section's lines are: the header's index and one past its last line.
struct SectionSpan {
    std::size_t header = 0, end = 0;
};

std::optional<SectionSpan> findSection(const std::vector<Line>& lines, std::string_view section)
{
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto name = sectionName(lines[i].text);
        if (!name || !sameName(*name, section))
            continue;
        std::size_t end = i + 1;
        while (end < lines.size() && !sectionName(lines[end].text))
            ++end;
        return SectionSpan{i, end};
    }
    return std::nullopt;
}

std::string cut(std::string_view s)
{
    return std::string(s.substr(0, kProfileBuffer - 1));
}

}  // namespace

std::string SettingsFile::read(std::string_view section, std::string_view key,
                               std::string_view def) const
{
    std::vector<char> bytes;
    std::error_code ec;
    // Only a file holds settings (a folder of that name holds none).
    if (!std::filesystem::is_regular_file(file_, ec) || !ReadWholeFile(file_.string(), bytes))
        return cut(def);
    const std::vector<Line> lines = splitLines(bytes);
    const auto span = findSection(lines, section);
    if (!span)
        return cut(def);
    for (std::size_t i = span->header + 1; i < span->end; ++i) {
        const auto kv = keyValue(lines[i].text);
        if (kv && sameName(kv->key, key))
            return cut(kv->value);
    }
    return cut(def);
}

void SettingsFile::write(std::string_view section, std::string_view key, std::string_view value)
{
    std::vector<char> bytes;
    std::vector<Line> lines;
    std::error_code ec;
    if (std::filesystem::is_regular_file(file_, ec) && ReadWholeFile(file_.string(), bytes))
        lines = splitLines(bytes);
    // New lines take the ending the file already uses.
    std::string nl = "\n";
    if (!lines.empty() && lines.front().ending == "\r\n")
        nl = "\r\n";
    const std::string entry = std::string(key) + "=" + std::string(value);

    const auto span = findSection(lines, section);
    if (!span) {
        if (!lines.empty() && lines.back().ending.empty())
            lines.back().ending = nl;
        lines.push_back({"[" + std::string(section) + "]", nl});
        lines.push_back({entry, nl});
    } else {
        bool replaced = false;
        for (std::size_t i = span->header + 1; i < span->end; ++i) {
            const auto kv = keyValue(lines[i].text);
            if (kv && sameName(kv->key, key)) {
                lines[i].text = entry;
                replaced = true;
                break;
            }
        }
        if (!replaced) {
            // After the section's last non-blank line.
            std::size_t at = span->end;
            while (at > span->header + 1 && TrimBlanks(lines[at - 1].text).empty())
                --at;
            if (lines[at - 1].ending.empty())
                lines[at - 1].ending = nl;
            lines.insert(lines.begin() + static_cast<long>(at), Line{entry, nl});
        }
    }
    std::vector<char> out;
    for (const Line& l : lines) {
        out.insert(out.end(), l.text.begin(), l.text.end());
        out.insert(out.end(), l.ending.begin(), l.ending.end());
    }
    try {
        // The per-user folder of the settings may not exist yet.
        std::error_code made;
        std::filesystem::create_directories(file_.parent_path(), made);
        WriteFileAtomically(file_.string(), out, "WriteSettings");
    } catch (const Fault& f) {
        ThrowFault(f.number(), "WriteSettings", f.detail());
    }
}

}  // namespace rw
