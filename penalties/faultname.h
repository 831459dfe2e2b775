#pragma once
// Runs a procedure's body so that any fault leaves it under the procedure's
// own name: arithmetic faults raised inside the money type (an overflow) are
// renamed to the procedure that was computing; a fault already named by a
// procedure of its own passes unchanged.

#include "casedata/fault.h"

#include <string_view>

namespace rw {

template <typename F>
decltype(auto) AsProcedure(std::string_view procedure, F&& body)
{
    try {
        return WithFaultName(procedure, body);
    } catch (const Fault& f) {
        if (f.procedure() == "Money" || f.procedure() == "RoundCurrency")
            ThrowFault(f.number(), procedure, f.detail());
        throw;
    }
}

}  // namespace rw
