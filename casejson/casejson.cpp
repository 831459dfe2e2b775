#include "casejson/casejson.h"

#include "base/binio.h"
#include "base/numtext.h"
#include "casedata/casefile.h"
#include "casedata/recordfields.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <set>
#include <vector>

namespace rw {

namespace {

using nlohmann::json;

// A number with a fraction or an exponent, as ParseCaseJson hands it on: its
// exact text behind this tag (U+E000, a private-use character that no case
// text can hold, since texts are Latin-1).
constexpr std::string_view kNumberTag = "\xEE\x80\x80";

constexpr std::int16_t kMaxListSize = 32767;
// Integers up to 2^53 convert to a day number exactly.
constexpr double kExactIntegerLimit = 9007199254740992.0;
// A case is four levels deep; each level costs the reader stack, so a text
// nested deeper than this is refused before it is parsed.
constexpr int kMaxJsonDepth = 256;
// The JSON of the largest case (three lists of 32,767 entries) fits well.
constexpr std::size_t kMaxJsonFileSize = std::size_t{64} << 20;

bool isTaggedNumber(const json& v)
{
    return v.is_string() && v.get_ref<const std::string&>().starts_with(kNumberTag);
}

// The decimal text of a JSON number (or of a tagged number); nullopt for
// anything else.
std::optional<std::string> numberText(const json& v)
{
    if (v.is_number_integer() && !v.is_number_unsigned())
        return std::to_string(v.get<std::int64_t>());
    if (v.is_number_unsigned())
        return std::to_string(v.get<std::uint64_t>());
    if (v.is_number_float())
        return v.dump();
    if (isTaggedNumber(v))
        return v.get_ref<const std::string&>().substr(kNumberTag.size());
    return std::nullopt;
}

// A value as an error message quotes it: numbers as written, strings in
// quotes, long values cut.
std::string shown(const json& v)
{
    std::string s;
    if (auto t = numberText(v))
        s = *t;
    else
        s = v.dump(-1, ' ', false, json::error_handler_t::replace);
    if (s.size() > 60)
        s = s.substr(0, 57) + "...";
    return s;
}

// ---- Latin-1 texts -------------------------------------------------------------

// Decodes UTF-8 into Latin-1 bytes; unlike Utf8ToLatin1 it refuses (with a
// reason) a character beyond U+00FF or a text that is not UTF-8, since a case
// read from JSON must be exactly the case written.
bool utf8ToLatin1(std::string_view text, std::string& out, std::string& why)
{
    out.clear();
    for (std::size_t i = 0; i < text.size();) {
        const auto b = static_cast<unsigned char>(text[i]);
        if (b < 0x80) {
            out += static_cast<char>(b);
            ++i;
            continue;
        }
        int len = 0;
        std::uint32_t cp = 0;
        if ((b & 0xE0) == 0xC0) {
            len = 2;
            cp = b & 0x1Fu;
        } else if ((b & 0xF0) == 0xE0) {
            len = 3;
            cp = b & 0x0Fu;
        } else if ((b & 0xF8) == 0xF0) {
            len = 4;
            cp = b & 0x07u;
        } else {
            why = "is not UTF-8";
            return false;
        }
        if (i + static_cast<std::size_t>(len) > text.size()) {
            why = "is not UTF-8";
            return false;
        }
        for (int k = 1; k < len; ++k) {
            const auto c = static_cast<unsigned char>(text[i + static_cast<std::size_t>(k)]);
            if ((c & 0xC0) != 0x80) {
                why = "is not UTF-8";
                return false;
            }
            cp = (cp << 6) | (c & 0x3Fu);
        }
        if (cp > 0xFF) {
            char buf[16];
            std::snprintf(buf, sizeof buf, "U+%04X", static_cast<unsigned>(cp));
            why = std::string("holds the character ") + buf
                  + ", which case texts cannot hold (Latin-1 only)";
            return false;
        }
        if (len != 2 || cp < 0x80) {  // an overlong form
            why = "is not UTF-8";
            return false;
        }
        out += static_cast<char>(cp);
        i += static_cast<std::size_t>(len);
    }
    return true;
}

// ---- Values to JSON --------------------------------------------------------------

template<typename J, std::size_t N>
J textToJson(const FixedText<N>& t)
{
    const std::string_view v = t.view();
    if (v.find_first_not_of('\0') == std::string_view::npos)
        return J(nullptr);  // never assigned
    return J(Latin1ToUtf8(v));
}

std::string hexBits(std::uint64_t bits, int digits)
{
    char buf[24];
    std::snprintf(buf, sizeof buf, "0x%0*llx", digits, static_cast<unsigned long long>(bits));
    return buf;
}

template<typename J>
J dateToJson(Date date)
{
    const double d = date.dayNumber();
    if (!std::isfinite(d))
        return J(hexBits(std::bit_cast<std::uint64_t>(d), 16));
    const bool negativeZero = d == 0.0 && std::signbit(d);
    if (date.isNoDate())
        return J(nullptr);
    const bool whole = d == std::floor(d) && !negativeZero;
    static const double kFirstShown = Date::fromCivil(1800, 1, 1).dayNumber();
    static const double kLastShown = Date::fromCivil(2200, 12, 31).dayNumber();
    if (whole && d >= kFirstShown && d <= kLastShown)
        return J(FormatMMDDYYYY(date));
    if (whole && std::fabs(d) <= kExactIntegerLimit)
        return J(static_cast<std::int64_t>(d));
    return J(d);  // a fraction of a day, -0, or far outside the calendar
}

// Four decimals cut to at least two: "10000.00", "12.3456", "-0.50".
std::string moneyText(Money m)
{
    std::string s = ExactMoney(m);
    while (s.size() > 2 && s.back() == '0' && s[s.size() - 3] != '.')
        s.pop_back();
    return s;
}

template<typename J>
J rateToJson(float f)
{
    if (!std::isfinite(f))
        return J(hexBits(std::bit_cast<std::uint32_t>(f), 8));
    char buf[32];
    const auto r = std::to_chars(buf, buf + sizeof buf, f);
    const std::string shortest(buf, r.ptr);
    double d = 0.0;
    std::from_chars(shortest.data(), shortest.data() + shortest.size(), d);
    J asNumber(d);
    // The number is written the way JSON writes a double; keep it only when
    // that text reads back as the very same single.
    const std::string written = asNumber.dump();
    float back = 0.0f;
    const auto br = std::from_chars(written.data(), written.data() + written.size(), back);
    if (br.ec == std::errc()
        && std::bit_cast<std::uint32_t>(back) == std::bit_cast<std::uint32_t>(f))
        return asNumber;
    return J(shortest);
}

template<typename J>
J flagToJson(Flag f)
{
    if (f == kYes)
        return J(true);
    if (f == kNo)
        return J(false);
    return J(static_cast<std::int64_t>(f));  // an odd stored value, kept as it is
}

// ---- Values from JSON -----------------------------------------------------------

template<std::size_t N>
bool textFromJson(const json& v, FixedText<N>& out, std::string& why)
{
    if (v.is_null()) {
        out = FixedText<N>();
        return true;
    }
    if (!v.is_string() || isTaggedNumber(v)) {
        why = "expected a text or null, found " + shown(v);
        return false;
    }
    std::string bytes;
    std::string reason;
    if (!utf8ToLatin1(v.get_ref<const std::string&>(), bytes, reason)) {
        why = "the text " + reason;
        return false;
    }
    if (bytes.size() > N) {
        why = "longer than " + std::to_string(N) + " characters (" + std::to_string(bytes.size())
              + ")";
        return false;
    }
    out.assign(bytes);
    return true;
}

bool parseHexBits(std::string_view s, std::size_t digits, std::uint64_t& bits)
{
    if (s.size() != 2 + digits || s[0] != '0' || (s[1] != 'x' && s[1] != 'X'))
        return false;
    const auto r = std::from_chars(s.data() + 2, s.data() + s.size(), bits, 16);
    return r.ec == std::errc() && r.ptr == s.data() + s.size();
}

bool dateFromJson(const json& v, Date& out, std::string& why)
{
    std::optional<Date> d;
    if (v.is_null())
        d = NoDate;
    else if (v.is_number_unsigned())
        d = Date(static_cast<double>(v.get<std::uint64_t>()));
    else if (v.is_number_integer())
        d = Date(static_cast<double>(v.get<std::int64_t>()));
    else if (v.is_number_float())
        d = Date(v.get<double>());
    else if (isTaggedNumber(v)) {
        const std::string t = *numberText(v);
        double n = 0.0;
        const auto r = std::from_chars(t.data(), t.data() + t.size(), n);
        // A number too large for a double is no date either.
        d = r.ptr == t.data() + t.size() && r.ec == std::errc() ? Date(n) : Date(HUGE_VAL);
    } else if (v.is_string()) {
        const std::string& s = v.get_ref<const std::string&>();
        std::uint64_t bits = 0;
        if (parseHexBits(s, 16, bits))
            d = Date(std::bit_cast<double>(bits));
        else
            d = ParseUserDate(s);
    }
    if (!d) {
        why = "not a date: " + shown(v);
        return false;
    }
    if (!IsReadableDate(*d)) {
        why = "not a date " + ReadableDatesText() + ": " + shown(v);
        return false;
    }
    out = *d;
    return true;
}

bool moneyFromJson(const json& v, Money& out, std::string& why)
{
    std::optional<std::string> text = numberText(v);
    if (!text && v.is_string())
        text = v.get<std::string>();
    if (text) {
        if (auto m = Money::parse(*text)) {
            out = *m;
            return true;
        }
    }
    why = "not an amount of money (at most four decimals): " + shown(v);
    return false;
}

bool rateFromJson(const json& v, float& out, std::string& why)
{
    std::optional<std::string> text = numberText(v);
    if (!text && v.is_string()) {
        const std::string& s = v.get_ref<const std::string&>();
        std::uint64_t bits = 0;
        if (parseHexBits(s, 8, bits)) {
            out = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
            return true;
        }
        text = s;
    }
    if (text) {
        float f = 0.0f;
        const auto r = std::from_chars(text->data(), text->data() + text->size(), f);
        if (r.ec == std::errc() && r.ptr == text->data() + text->size() && !text->empty()) {
            out = f;
            return true;
        }
    }
    why = "not a rate: " + shown(v);
    return false;
}

bool int16FromJson(const json& v, std::int16_t& out)
{
    if (!v.is_number_integer())
        return false;
    if (v.is_number_unsigned()) {
        const auto u = v.get<std::uint64_t>();
        if (u > 32767)
            return false;
        out = static_cast<std::int16_t>(u);
        return true;
    }
    const auto n = v.get<std::int64_t>();
    if (n < -32768 || n > 32767)
        return false;
    out = static_cast<std::int16_t>(n);
    return true;
}

bool flagFromJson(const json& v, Flag& out, std::string& why)
{
    if (v.is_boolean()) {
        out = ToFlag(v.get<bool>());
        return true;
    }
    if (int16FromJson(v, out))
        return true;
    why = "not a flag (true, false or a whole number from -32768 to 32767): " + shown(v);
    return false;
}

bool integerFromJson(const json& v, std::int16_t& out, std::string& why)
{
    if (int16FromJson(v, out))
        return true;
    why = "not a whole number from -32768 to 32767: " + shown(v);
    return false;
}

template<typename J>
struct Exporter {
    J obj = J::object();

    template<std::size_t N>
    void text(const char* name, const FixedText<N>& t)
    {
        obj[name] = textToJson<J>(t);
    }
    void date(const char* name, const Date& d) { obj[name] = dateToJson<J>(d); }
    void money(const char* name, const Money& m) { obj[name] = moneyText(m); }
    void rate(const char* name, const float& f) { obj[name] = rateToJson<J>(f); }
    void flag(const char* name, const Flag& f) { obj[name] = flagToJson<J>(f); }
    void integer(const char* name, const std::int16_t& n) { obj[name] = n; }
    void point(const char* name, const TLPoint& p)
    {
        Exporter<J> e;
        VisitPointFields(e, p);
        obj[name] = std::move(e.obj);
    }
};

template<typename J, typename T, typename Visit>
J listToJson(std::span<const T> items, Visit visit)
{
    J arr = J::array();
    for (const T& item : items) {
        Exporter<J> e;
        visit(e, item);
        arr.push_back(std::move(e.obj));
    }
    return arr;
}

template<typename J>
J datedAmountsToJson(const std::vector<DatedAmount>& list)
{
    J arr = J::array();
    for (const DatedAmount& a : list) {
        J item = J::object();
        item["date"] = dateToJson<J>(a.date);
        item["amount"] = moneyText(a.amount);
        arr.push_back(std::move(item));
    }
    return arr;
}

template<typename J>
J estTaxToJson(const EstTaxCase& e)
{
    const EstTaxInput& in = e.input;
    J out = J::object();
    out["on"] = e.on;
    out["filer"] = in.filer == EstTaxFiler::Corporation ? "corporation" : "individual";
    out["taxYear"] = in.taxYear;
    out["fiscalYearEndMonth"] = in.fiscalYearEndMonth;
    out["currentTax"] = moneyText(in.currentTax);
    out["priorTax"] = moneyText(in.priorTax);
    out["priorYearUsable"] = in.priorYearUsable;
    out["highIncome"] = in.highIncome;
    out["largeCorporation"] = in.largeCorporation;
    out["withholding"] = moneyText(in.withholding);
    out["withholdingByDate"] = datedAmountsToJson<J>(in.withholdingByDate);
    out["estimatedPayments"] = datedAmountsToJson<J>(in.estimatedPayments);
    J installments(nullptr);
    if (in.installments) {
        installments = J::array();
        for (Money m : *in.installments)
            installments.push_back(moneyText(m));
    }
    out["installments"] = std::move(installments);
    out["noticeDate"] = dateToJson<J>(e.noticeDate);
    return out;
}

template<typename J>
J caseToJson(const Case& c)
{
    J out = J::object();
    Exporter<J> init;
    VisitInitFields(init, c.init);
    out["init"] = std::move(init.obj);
    out["payments"] = listToJson<J>(c.payments(),
                                    [](auto& v, const PaymentRec& p) { VisitPaymentFields(v, p); });
    out["charges"] = listToJson<J>(c.otherCharges(),
                                   [](auto& v, const ChargeRec& x) { VisitChargeFields(v, x); });
    out["deposits"] = listToJson<J>(c.payrollDeposits(),
                                    [](auto& v, const DepositRec& d) { VisitDepositFields(v, d); });
    if (!c.estTax.isEmpty())
        out["estTax"] = estTaxToJson<J>(c.estTax);
    return out;
}

// Reads the fields of one JSON object into a record; stops at the first
// problem, which it words as "path.field: reason".
class Importer {
public:
    Importer(const json& obj, std::string path, std::string& error)
        : obj_(obj)
        , path_(std::move(path))
        , error_(error)
    {
    }

    template<std::size_t N>
    void text(const char* name, FixedText<N>& t)
    {
        field(name, [&](const json& v, std::string& why) { return textFromJson(v, t, why); });
    }
    void date(const char* name, Date& d)
    {
        field(name, [&](const json& v, std::string& why) { return dateFromJson(v, d, why); });
    }
    void money(const char* name, Money& m)
    {
        field(name, [&](const json& v, std::string& why) { return moneyFromJson(v, m, why); });
    }
    void rate(const char* name, float& f)
    {
        field(name, [&](const json& v, std::string& why) { return rateFromJson(v, f, why); });
    }
    void flag(const char* name, Flag& f)
    {
        field(name, [&](const json& v, std::string& why) { return flagFromJson(v, f, why); });
    }
    void integer(const char* name, std::int16_t& n)
    {
        field(name, [&](const json& v, std::string& why) { return integerFromJson(v, n, why); });
    }
    void point(const char* name, TLPoint& p)
    {
        field(name, [&](const json& v, std::string& why) {
            if (!v.is_object()) {
                why = "expected an object, found " + shown(v);
                return false;
            }
            Importer inner(v, path_ + "." + name, error_);
            VisitPointFields(inner, p);
            return inner.finish();  // the inner importer words its own error
        });
    }

    // After the visit: refuses keys that name no field. True when all went well.
    bool finish()
    {
        if (failed_)
            return false;
        for (auto it = obj_.begin(); it != obj_.end(); ++it) {
            if (!known_.contains(it.key()))
                return fail(it.key(), "unknown field");
        }
        return true;
    }

private:
    template<typename F>
    void field(const char* name, F read)
    {
        known_.insert(name);
        if (failed_)
            return;
        const auto it = obj_.find(name);
        if (it == obj_.end())
            return;
        std::string why;
        if (!read(*it, why)) {
            failed_ = true;
            if (!why.empty())
                error_ = path_ + "." + name + ": " + why;
        }
    }

    bool fail(const std::string& name, const std::string& why)
    {
        failed_ = true;
        error_ = path_ + "." + name + ": " + why;
        return false;
    }

    const json& obj_;
    std::string path_;
    std::string& error_;
    std::set<std::string, std::less<>> known_;
    bool failed_ = false;
};

template<typename T, typename Visit>
bool listFromJson(const json& doc, const char* name, std::vector<T>& list, std::string& error,
                  Visit visit)
{
    list.clear();
    const auto it = doc.find(name);
    if (it == doc.end())
        return true;
    if (!it->is_array()) {
        error = std::string(name) + ": expected an array, found " + shown(*it);
        return false;
    }
    if (it->size() > static_cast<std::size_t>(kMaxListSize)) {
        error = std::string(name) + ": more than " + std::to_string(kMaxListSize) + " entries";
        return false;
    }
    for (std::size_t i = 0; i < it->size(); ++i) {
        const std::string path = std::string(name) + "[" + std::to_string(i) + "]";
        const json& item = (*it)[i];
        if (!item.is_object()) {
            error = path + ": expected an object, found " + shown(item);
            return false;
        }
        T rec{};
        Importer in(item, path, error);
        visit(in, rec);
        if (!in.finish())
            return false;
        list.push_back(rec);
    }
    return true;
}

// The count of a list follows the list; a count given in the record must
// agree with it.
template<typename T>
bool settleCount(const json& doc, const char* countName, const char* listName, std::vector<T>& list,
                 std::int16_t& count, std::string& error)
{
    const auto n = static_cast<std::int16_t>(list.size());
    const auto init = doc.find("init");
    if (init != doc.end() && init->contains(countName) && count != n) {
        error = std::string("init.") + countName + ": " + std::to_string(count) + ", but \""
                + listName + "\" holds " + std::to_string(n) + (n == 1 ? " entry" : " entries");
        return false;
    }
    count = n;
    if (list.empty())
        list.assign(1, T{});
    return true;
}

// Reads the "estTax" object: the same bounds as the case file holds (see
// casedata/casefile.h), each problem named "estTax.field: reason".
class EstTaxImporter {
public:
    explicit EstTaxImporter(std::string& error)
        : error_(error)
    {
    }

    bool read(const json& obj, EstTaxCase& e)
    {
        if (!obj.is_object())
            return fail("estTax", "expected an object, found " + shown(obj));
        static const std::set<std::string, std::less<>> kKeys = {"on",
                                                                 "filer",
                                                                 "taxYear",
                                                                 "fiscalYearEndMonth",
                                                                 "currentTax",
                                                                 "priorTax",
                                                                 "priorYearUsable",
                                                                 "highIncome",
                                                                 "largeCorporation",
                                                                 "withholding",
                                                                 "withholdingByDate",
                                                                 "estimatedPayments",
                                                                 "installments",
                                                                 "noticeDate"};
        for (auto it = obj.begin(); it != obj.end(); ++it)
            if (!kKeys.contains(it.key()))
                return fail("estTax." + it.key(), "unknown field");
        EstTaxInput& in = e.input;
        std::string why;
        const auto at = [&](const char* key) { return obj.find(key); };
        const auto field = [&](const char* key, auto readOne) {
            const auto it = at(key);
            if (it == obj.end() || readOne(*it))
                return true;
            return fail(std::string("estTax.") + key, why);
        };
        const auto boolean = [&](bool& out) {
            return [&out, &why](const json& v) {
                if (v.is_boolean())
                    return out = v.get<bool>(), true;
                why = "expected true or false, found " + shown(v);
                return false;
            };
        };
        const auto money = [&](Money& out) {
            return [&out, &why](const json& v) { return moneyFromJson(v, out, why); };
        };
        // A whole number from low to high, or 0 when zeroAllowed (a year not yet given).
        const auto whole = [&](int& out, int low, int high, bool zeroAllowed, const char* what) {
            return [&out, &why, low, high, zeroAllowed, what](const json& v) {
                std::int16_t n = 0;
                if (int16FromJson(v, n) && ((n >= low && n <= high) || (n == 0 && zeroAllowed))) {
                    out = n;
                    return true;
                }
                why = std::string("not ") + what + ": " + shown(v);
                return false;
            };
        };
        const auto filer = [&](const json& v) {
            if (v == "individual" || v == "corporation") {
                in.filer = v == "corporation" ? EstTaxFiler::Corporation : EstTaxFiler::Individual;
                return true;
            }
            why = "neither \"individual\" nor \"corporation\": " + shown(v);
            return false;
        };
        const auto installments = [&](const json& v) {
            if (v.is_null())
                return in.installments.reset(), true;
            if (!v.is_array() || v.size() != 4) {
                why = "expected null or an array of four amounts, found " + shown(v);
                return false;
            }
            std::array<Money, 4> parts{};
            for (std::size_t i = 0; i < 4; ++i)
                if (!moneyFromJson(v[i], parts[i], why))
                    return false;
            in.installments = parts;
            return true;
        };
        return field("on", boolean(e.on)) && field("filer", filer)
               && field("taxYear", whole(in.taxYear, kFirstReadableYear, kLastReadableYear, true,
                                         "0 or a year from 1800 to 2199"))
               && field("fiscalYearEndMonth",
                        whole(in.fiscalYearEndMonth, 1, 12, false, "a month from 1 to 12"))
               && field("currentTax", money(in.currentTax)) && field("priorTax", money(in.priorTax))
               && field("priorYearUsable", boolean(in.priorYearUsable))
               && field("highIncome", boolean(in.highIncome))
               && field("largeCorporation", boolean(in.largeCorporation))
               && field("withholding", money(in.withholding))
               && list(obj, "withholdingByDate", in.withholdingByDate)
               && list(obj, "estimatedPayments", in.estimatedPayments)
               && field("installments", installments) && field("noticeDate", [&](const json& v) {
                      return dateFromJson(v, e.noticeDate, why);
                  });
    }

private:
    bool list(const json& obj, const char* key, std::vector<DatedAmount>& out)
    {
        const std::string path = std::string("estTax.") + key;
        const auto it = obj.find(key);
        if (it == obj.end())
            return true;
        if (!it->is_array())
            return fail(path, "expected an array, found " + shown(*it));
        if (it->size() > kMaxEstTaxEntries)
            return fail(path, "more than " + std::to_string(kMaxEstTaxEntries) + " entries");
        for (std::size_t i = 0; i < it->size(); ++i) {
            const json& item = (*it)[i];
            const std::string at = path + "[" + std::to_string(i) + "]";
            if (!item.is_object())
                return fail(at, "expected an object, found " + shown(item));
            DatedAmount a{NoDate, Money{}};
            std::string why;
            for (auto k = item.begin(); k != item.end(); ++k)
                if (k.key() != "date" && k.key() != "amount")
                    return fail(at + "." + k.key(), "unknown field");
            if (item.contains("date") && !dateFromJson(item["date"], a.date, why))
                return fail(at + ".date", why);
            if (item.contains("amount") && !moneyFromJson(item["amount"], a.amount, why))
                return fail(at + ".amount", why);
            out.push_back(a);
        }
        return true;
    }

    bool fail(const std::string& path, const std::string& why)
    {
        error_ = path + ": " + why;
        return false;
    }

    std::string& error_;
};

// Builds the document as nlohmann's own parser would, except that numbers
// with a fraction or an exponent keep their text and a key may not repeat.
class CaseJsonSax {
public:
    explicit CaseJsonSax(json& out)
        : dom_(out, false)
    {
    }

    bool null() { return dom_.null(); }
    bool boolean(bool v) { return dom_.boolean(v); }
    bool number_integer(json::number_integer_t v) { return dom_.number_integer(v); }
    bool number_unsigned(json::number_unsigned_t v) { return dom_.number_unsigned(v); }
    bool number_float(json::number_float_t, const std::string& text)
    {
        std::string tagged = std::string(kNumberTag) + text;
        return dom_.string(tagged);
    }
    bool string(std::string& v)
    {
        if (v.starts_with(kNumberTag)) {
            error = "a text begins with the reserved character U+E000";
            return false;
        }
        return dom_.string(v);
    }
    bool binary(json::binary_t& v) { return dom_.binary(v); }
    bool start_object(std::size_t n)
    {
        keys_.emplace_back();
        return dom_.start_object(n);
    }
    bool key(std::string& k)
    {
        if (!keys_.back().insert(k).second) {
            error = "the key \"" + k + "\" appears twice in one object";
            return false;
        }
        return dom_.key(k);
    }
    bool end_object()
    {
        keys_.pop_back();
        return dom_.end_object();
    }
    bool start_array(std::size_t n) { return dom_.start_array(n); }
    bool end_array() { return dom_.end_array(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& ex)
    {
        std::string what = ex.what();
        // "[json.exception.parse_error.101] parse error at line 1, ..." -> "parse error at line 1,
        // ..."
        if (const auto close = what.find("] ");
            what.starts_with("[json.exception") && close != std::string::npos)
            what = what.substr(close + 2);
        error = "not valid JSON: " + what;
        return false;
    }

    std::string error;

private:
    nlohmann::detail::json_sax_dom_parser<json> dom_;
    std::vector<std::set<std::string>> keys_;
};

// Refuses, with the line and column, what the parser must never see: a NUL
// byte (the parser would take it for the end of the text and ignore the
// rest) and nesting deeper than kMaxJsonDepth.
bool checkShape(std::string_view text, std::string& error)
{
    std::size_t line = 1, column = 0;
    int depth = 0;
    bool inString = false, escaped = false;
    const auto at
        = [&] { return " at line " + std::to_string(line) + ", column " + std::to_string(column); };
    for (const char ch : text) {
        ++column;
        if (ch == '\0') {
            error = "not valid JSON: a NUL byte" + at();
            return false;
        }
        if (ch == '\n') {
            ++line;
            column = 0;
        } else if (inString) {
            if (escaped)
                escaped = false;
            else if (ch == '\\')
                escaped = true;
            else if (ch == '"')
                inString = false;
        } else if (ch == '"') {
            inString = true;
        } else if (ch == '{' || ch == '[') {
            if (++depth > kMaxJsonDepth) {
                error = "not valid JSON: nested deeper than " + std::to_string(kMaxJsonDepth)
                        + " levels" + at();
                return false;
            }
        } else if (ch == '}' || ch == ']') {
            --depth;
        }
    }
    return true;
}

}  // namespace

bool ParseCaseJson(std::string_view text, nlohmann::json& out, std::string& error)
{
    if (!checkShape(text, error))
        return false;
    json doc;
    CaseJsonSax sax(doc);
    const bool ok = json::sax_parse(text.begin(), text.end(), &sax);
    if (!ok) {
        error = sax.error.empty() ? "not valid JSON" : sax.error;
        return false;
    }
    out = std::move(doc);
    return true;
}

std::optional<Case> CaseFromJson(const nlohmann::json& j, std::string& error)
{
    if (!j.is_object()) {
        error = "a case is a JSON object with \"init\", \"payments\", \"charges\" and \"deposits\"";
        return std::nullopt;
    }
    for (auto it = j.begin(); it != j.end(); ++it) {
        const std::string& k = it.key();
        if (k != "init" && k != "payments" && k != "charges" && k != "deposits" && k != "estTax") {
            error = k + ": unknown field";
            return std::nullopt;
        }
    }
    Case c;
    ClearInputs(c);
    if (const auto init = j.find("init"); init != j.end()) {
        if (!init->is_object()) {
            error = "init: expected an object, found " + shown(*init);
            return std::nullopt;
        }
        Importer in(*init, "init", error);
        VisitInitFields(in, c.init);
        if (!in.finish())
            return std::nullopt;
    }
    if (!listFromJson(j, "payments", c.pmts, error,
                      [](Importer& v, PaymentRec& p) { VisitPaymentFields(v, p); })
        || !listFromJson(j, "charges", c.charges, error,
                         [](Importer& v, ChargeRec& x) { VisitChargeFields(v, x); })
        || !listFromJson(j, "deposits", c.deposits, error,
                         [](Importer& v, DepositRec& d) { VisitDepositFields(v, d); }))
        return std::nullopt;
    if (!settleCount(j, "nPmts", "payments", c.pmts, c.init.nPmts, error)
        || !settleCount(j, "nCharges", "charges", c.charges, c.init.nCharges, error)
        || !settleCount(j, "nDeposits", "deposits", c.deposits, c.init.nDeposits, error))
        return std::nullopt;
    if (const auto e = j.find("estTax"); e != j.end() && !EstTaxImporter(error).read(*e, c.estTax))
        return std::nullopt;
    return c;
}

nlohmann::json CaseToJson(const Case& c)
{
    return caseToJson<nlohmann::json>(c);
}

std::string CaseToJsonText(const Case& c)
{
    return caseToJson<nlohmann::ordered_json>(c).dump(2) + "\n";
}

bool LoadCaseFile(const std::string& path, Case& out, std::string& error)
{
    FileBytes file = ReadFileBounded(path, kMaxJsonFileSize);
    switch (file.status) {
    case ReadStatus::Ok:
        break;
    case ReadStatus::Missing:
    case ReadStatus::NotAFile:
        error = path + ": no such file";
        return false;
    case ReadStatus::TooLarge:
        error = path + ": larger than any case (" + std::to_string(kMaxJsonFileSize) + " bytes)";
        return false;
    case ReadStatus::Failed:
        error = path + ": cannot be read: " + file.reason;
        return false;
    }
    const std::vector<char>& bytes = file.bytes;
    if (bytes.size() >= kFileMarker.size()
        && std::string_view(bytes.data(), kFileMarker.size()) == kFileMarker) {
        CaseReadResult r = DecodeCase(bytes);
        if (r.status != CaseReadResult::Status::Ok) {
            error = path + ": damaged case file: " + r.detail;
            return false;
        }
        out = std::move(r.kase);
        return true;
    }
    json doc;
    std::string why;
    const std::string_view text(bytes.data(), bytes.size());
    if (!ParseCaseJson(text, doc, why)) {
        const auto first = text.find_first_not_of(" \t\r\n");
        const bool looksJson
            = (first != std::string_view::npos && (text[first] == '{' || text[first] == '['))
              || std::filesystem::path(path).extension() == ".json";
        error = path
                + (looksJson ? ": "
                             : ": neither a case file (no \"NOTVB3\" marker) nor a JSON case: ")
                + why;
        return false;
    }
    std::optional<Case> c = CaseFromJson(doc, why);
    if (!c) {
        error = path + ": " + why;
        return false;
    }
    out = std::move(*c);
    return true;
}

}  // namespace rw
