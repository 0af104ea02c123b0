// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "fuzzbcdii.h"

extern "C" int LLVMFuzzerTestOneInput(const BYTE *bytes, std::size_t size)
{
    FuzzInput input(bytes, size);
    const Oracle::Type t = input.type();
    ExactBytes value(input.value(t));
    const std::string text = BCDII2StringSequence(value.data(), t.word()).c_str();
    require(text == Oracle::format(value.data(), t), "format");
    if (t.nfrac < 0 || text.empty())
        return 0;
    ExactBytes back(t.size());
    BCDIIType word = t.word();
    BCDIIFromString(back.data(), word, text.c_str());
    require(word == t.word() && std::equal(back.data(), back.data() + t.size(), value.data()),
            "format and parse");
    return 0;
}
