#pragma once

#include "common/InstructionSet.h"
#include "common/Lanes.h"

/// Picks a lane form of the instruction set in use.
#ifdef __x86_64__
#define LANE_FORM(name) chosenForm(lanes::sse2::name, lanes::avx2::name, lanes::avx512::name)
#else
#define LANE_FORM(name) (&lanes::sse2::name)
#endif

template<typename Form>
Form* chosenForm(Form& sse2, Form& avx2, Form& avx512)
{
    switch (instructionSet()) {
    case InstructionSet::Avx512:
        return &avx512;
    case InstructionSet::Avx2:
        return &avx2;
    case InstructionSet::Sse2:
        break;
    }
    return &sse2;
}
