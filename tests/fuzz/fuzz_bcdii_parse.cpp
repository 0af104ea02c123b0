// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "fuzzbcdii.h"

extern "C" int LLVMFuzzerTestOneInput(const BYTE *bytes, std::size_t size)
{
    FuzzInput input(bytes, size);
    const Oracle::Type t = input.type();
    const std::string text = input.rest().c_str();
    const Oracle::ParseOutcome expected = Oracle::parse(text, t);
    ExactBytes dst(std::max(t.size(), expected.type.size()));
    std::unique_ptr<char[]> exactText(new char[text.size() + 1]);
    std::copy_n(text.c_str(), text.size() + 1, exactText.get());
    BCDIIType word = t.word();
    const UINT32 status = BCDIIFromString(dst.data(), word, exactText.get());
    require(status == expected.value.status && word == expected.type.word(), "parse: status");
    require(dst.holds(expected.value), "parse: bytes");
    return 0;
}
