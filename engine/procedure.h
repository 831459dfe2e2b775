#pragma once
// The engine's fault naming: a fault reports the procedure in which it
// happened. Faults that the shared value types raise (money arithmetic out of
// range, a list count beyond its list) carry the type's name, which is no
// procedure of the program; the engine procedure running them gives them its
// own name. A fault already named by an inner procedure keeps that name, and
// any other exception becomes a fault of the procedure (out of memory: 7,
// anything else: 5).

#include "casedata/fault.h"

#include <new>
#include <string_view>

namespace rw::engine_detail {

inline bool NamedByValueType(const Fault& f)
{
    return f.procedure() == "Money" || f.procedure() == "Case" || f.procedure() == "RoundCurrency";
}

template <typename F>
decltype(auto) InProcedure(std::string_view procedure, F&& body)
{
    try {
        return body();
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

}  // namespace rw::engine_detail
