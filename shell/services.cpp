#include "shell/services.h"

#include <ctime>

namespace rw {

Date SystemClock::today() const
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return Date::fromCivil(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
}

}  // namespace rw
