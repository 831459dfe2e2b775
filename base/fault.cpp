#include "base/fault.h"

namespace rw {

Fault::Fault(std::int16_t number, std::string procedure, std::string detail)
    : std::runtime_error("Error " + std::to_string(number) + " in " + procedure
                         + (detail.empty() ? std::string() : ": " + detail))
    , number_(number)
    , procedure_(std::move(procedure))
    , detail_(std::move(detail))
{
}

void ThrowFault(std::int16_t number, std::string_view procedure, std::string detail)
{
    throw Fault(number, std::string(procedure), std::move(detail));
}

Refusal::Refusal(std::string title, const std::string& text)
    : std::runtime_error(text)
    , title_(std::move(title))
{
}

bool NamedByValueType(const Fault& f)
{
    return f.procedure() == "Money" || f.procedure() == "Case" || f.procedure() == "RoundCurrency";
}

std::string ErrorDescription(int number)
{
    switch (number) {
    case 3:
        return "Return without GoSub";
    case 5:
        return "Invalid procedure call or argument";
    case 6:
        return "Overflow";
    case 7:
        return "Out of memory";
    case 9:
        return "Subscript out of range";
    case 10:
        return "This array is fixed or temporarily locked";
    case 11:
        return "Division by zero";
    case 13:
        return "Type mismatch";
    case 52:
        return "Bad file name or number";
    case 53:
        return "File not found";
    case 54:
        return "Bad file mode";
    case 55:
        return "File already open";
    case 57:
        return "Device I/O error";
    case 58:
        return "File already exists";
    case 61:
        return "Disk full";
    case 62:
        return "Input past end of file";
    case 70:
        return "Permission denied";
    case 71:
        return "Disk not ready";
    case 75:
        return "Path/File access error";
    case 76:
        return "Path not found";
    case 321:
        return "Invalid file format";
    default:
        return "Application-defined or object-defined error";
    }
}

}  // namespace rw
