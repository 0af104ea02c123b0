// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "fuzzbcdii.h"

extern "C" int LLVMFuzzerTestOneInput(const BYTE *bytes, std::size_t size)
{
    FuzzInput input(bytes, size);
    const Oracle::Type t = input.type();
    const BCDIIroundstyle style = input.style();
    const int fd = static_cast<std::int8_t>(input.byte()) * (input.byte() % 3);
    const UINT64 bits = input.word() >> input.byte() % 64;
    ExactBytes value(input.value(t));
    INT64 integer = 0x5555;
    const Oracle::IntegerOutcome toInteger =
        Oracle::toInt64(Oracle::read(value.data(), t), fd, style);
    const UINT32 status = BCDII2Int64(&integer, value.data(), t.word(), fd, style);
    require(status == toInteger.status, "to integer: status");
    require(integer == (toInteger.written ? toInteger.value : 0x5555), "to integer");

    double real = 0;
    BCDII2Double(&real, value.data(), t.word());
    require(real == Oracle::toDouble(value.data(), t), "to double");

    ExactBytes fromInteger(t.size());
    const Oracle::Outcome expected = Oracle::fromUInt64(bits, fd, t);
    require(BCDIIGetFromUInt64(fromInteger.data(), t.word(), bits, fd) == expected.status
                && fromInteger.holds(expected),
            "from integer");

    std::memcpy(&real, &bits, sizeof real);
    ExactBytes fromDouble(t.size());
    const Oracle::Outcome rounded = Oracle::fromDouble(real, t);
    require(BCDIIGetFromDouble(fromDouble.data(), real, t.word()) == rounded.status
                && fromDouble.holds(rounded),
            "from double");
    return 0;
}
