// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "fuzzbcdii.h"

extern "C" int LLVMFuzzerTestOneInput(const BYTE *bytes, std::size_t size)
{
    FuzzInput input(bytes, size);
    const Oracle::Type s = input.type();
    const Oracle::Type d = input.type();
    const BCDIIroundstyle style = input.style();
    ExactBytes src(input.value(s));
    ExactBytes dst(d.size());
    const Oracle::Outcome expected = Oracle::store(Oracle::read(src.data(), s), d, style);
    const UINT32 status = BCDIICopy(dst.data(), d.word(), src.data(), s.word(), style);
    require(status == expected.status && dst.holds(expected), "copy");
    return 0;
}
