#pragma once
// An unexpected fault: the error number of the failing operation and the name
// of the procedure in which it happened. Faults travel as exceptions up to the
// command boundary, where the error reporter takes them; expected conditions
// (a missing file, a wrong date) are answered where they occur and never
// become faults.

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace rw {

// Error numbers kept from the desktop run-time's numbering; 9 and 321 carry
// hints of their own in the error reporter.
inline constexpr std::int16_t kErrInvalidCall = 5;
inline constexpr std::int16_t kErrOverflow = 6;
inline constexpr std::int16_t kErrOutOfMemory = 7;
inline constexpr std::int16_t kErrSubscript = 9;
inline constexpr std::int16_t kErrDivisionByZero = 11;
inline constexpr std::int16_t kErrTypeMismatch = 13;
inline constexpr std::int16_t kErrFileNotFound = 53;
inline constexpr std::int16_t kErrDeviceIO = 57;
inline constexpr std::int16_t kErrPastEnd = 62;
inline constexpr std::int16_t kErrPermission = 70;
inline constexpr std::int16_t kErrPathAccess = 75;
inline constexpr std::int16_t kErrInvalidFormat = 321;

class Fault : public std::runtime_error {
public:
    Fault(std::int16_t number, std::string procedure, std::string detail = {});

    std::int16_t number() const { return number_; }
    const std::string& procedure() const { return procedure_; }
    const std::string& detail() const { return detail_; }

private:
    std::int16_t number_;
    std::string procedure_;
    std::string detail_;
};

[[noreturn]] void ThrowFault(std::int16_t number, std::string_view procedure,
                             std::string detail = {});

// A file that could not be written (the safe writer's faults: the device 57,
// permission 70, the path 75): told to the user where it arises, never a fault
// of the program.
inline bool IsWriteFault(const Fault& f)
{
    return f.number() == kErrDeviceIO || f.number() == kErrPermission
           || f.number() == kErrPathAccess;
}

// An expected condition met inside a computation: the case asks for something
// the program cannot honestly give (interest on a rate the table does not
// hold). It is answered with a message where the computation was asked for;
// the program, the case in memory and the case on disk stay as they were.
// Never a fault: WithFaultName lets it pass unchanged.
class Refusal : public std::runtime_error {
public:
    Refusal(std::string title, const std::string& text);

    const std::string& title() const { return title_; }
    std::string_view text() const { return what(); }

private:
    std::string title_;
};

// The description of an error number, as the run-time words it
// ("Subscript out of range" for 9, "Invalid file format" for 321).
std::string ErrorDescription(int number);

// Runs body as the procedure `procedure`, so that a fault leaves it under a
// procedure's name: a fault raised inside a value type (money arithmetic out
// of range, a list count beyond its list) takes this procedure's name; a fault
// already named by an inner procedure keeps its name; any other exception
// becomes a fault of this procedure (out of memory: 7, anything else: 5).
template<typename F>
decltype(auto) WithFaultName(std::string_view procedure, F&& body);

// Faults named after a value type rather than a procedure of the program.
bool NamedByValueType(const Fault& f);

}  // namespace rw

#include <new>

namespace rw {

template<typename F>
decltype(auto) WithFaultName(std::string_view procedure, F&& body)
{
    try {
        return body();
    } catch (const Refusal&) {
        throw;
    } catch (const Fault& f) {
        if (NamedByValueType(f))
            ThrowFault(f.number(), procedure, f.detail());
        throw;
    } catch (const std::bad_alloc&) {
        ThrowFault(kErrOutOfMemory, procedure);
    } catch (const std::exception& e) {
        ThrowFault(kErrInvalidCall, procedure, e.what());
    }
}

}  // namespace rw
