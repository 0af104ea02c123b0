// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "fuzzbcdii.h"

extern "C" int LLVMFuzzerTestOneInput(const BYTE *bytes, std::size_t size)
{
    FuzzInput input(bytes, size);
    const Oracle::Type at = input.type();
    const Oracle::Type bt = input.type();
    const Oracle::Type d = input.type();
    const BCDIIroundstyle style = input.style();
    ExactBytes a(input.value(at));
    ExactBytes b(input.value(bt));
    ExactBytes dst(d.size());
    const Oracle::Outcome expected =
        Oracle::multiply(Oracle::read(a.data(), at), Oracle::read(b.data(), bt), d, style);
    const UINT32 status =
        BCDIIMul(dst.data(), d.word(), a.data(), at.word(), b.data(), bt.word(), style);
    require(status == expected.status && dst.holds(expected), "multiply");
    return 0;
}
