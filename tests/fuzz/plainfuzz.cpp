// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

//! \file
//! The fuzz targets without a fuzzer, for machines and compilers that have none: each gets
//! the corpora that are kept and random inputs from a fixed seed.
//!
//!     plainfuzz CORPUS_DIRECTORY INPUTS

// One unit, so that the big integers are compiled once.
#define LLVMFuzzerTestOneInput fuzzAdd
#include "fuzz_bcdii_add.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput fuzzConvert
#include "fuzz_bcdii_convert.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput fuzzCopy
#include "fuzz_bcdii_copy.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput fuzzFormat
#include "fuzz_bcdii_format.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput fuzzMultiply
#include "fuzz_bcdii_multiply.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput fuzzParse
#include "fuzz_bcdii_parse.cpp"
#undef LLVMFuzzerTestOneInput

#include "bcdiivalue.h"

#include <bit>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace {

struct Target
{
    const char *name;
    int (*run)(const BYTE *, std::size_t);
};

const Target targets[] = {{"add", fuzzAdd},       {"convert", fuzzConvert},   {"copy", fuzzCopy},
                          {"format", fuzzFormat}, {"multiply", fuzzMultiply}, {"parse", fuzzParse}};

using Bytes = std::vector<BYTE>;

int runCorpus(const Target &target, const std::filesystem::path &directory)
{
    int count = 0;
    for (const auto &entry : std::filesystem::directory_iterator(directory)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const Bytes bytes {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        target.run(bytes.data(), bytes.size());
        ++count;
    }
    return count;
}

// Any bytes, or for the parser bytes of a number, behind those of a type.
Bytes randomInput(std::mt19937_64 &engine, bool isText)
{
    static const std::string characters = "00000123456789901234567895.,-+ \tx";
    Bytes bytes(2 + engine() % 80);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto bits = engine();
        const bool isCharacter = isText && i > 1 && (bits >> 32) % 50 != 0;
        bytes[i] = isCharacter ? static_cast<BYTE>(characters[bits % characters.size()])
                               : static_cast<BYTE>(bits);
    }
    return bytes;
}

void runRandom(const Target &target, long inputs)
{
    std::mt19937_64 engine(20240611);
    for (long i = 0; i < inputs; ++i) {
        const Bytes bytes = randomInput(engine, std::strcmp(target.name, "parse") == 0);
        target.run(bytes.data(), bytes.size());
    }
}

// The type word stands in the machine's order, the data do not depend on it.
void checkHeader()
{
    std::array<BYTE, 6> value {};
    BCDIIInit(value.data(), 0x0502);
    bool ok = false;
    BCDIIFromString(value.data(), "-123.45", &ok);
    const bool isLittle = std::endian::native == std::endian::little;
    const std::array<BYTE, 6> expected {BYTE(isLittle ? 2 : 5), BYTE(isLittle ? 5 : 2), 0x81, 0x17,
                                        0x2D};
    require(ok && value == expected, "header: bytes");
    require(BCDIIGetType(value.data()) == 0x0502, "header: type");
    require(std::strcmp(BCDII2StringSequence(value.data()).c_str(), "-123.45") == 0,
            "header: text");
}

void checkValueClass()
{
    using Money = BCDIIValue<15, 2>;
    const Money total = Money::fromString("19.90") * Money(3) + Money::fromString("4.50");
    require(total == Money::fromString("64.2"), "value: sum");
    require(total.toString() == "64.20", "value: text");
    require(std::hash<Money>()(total) == std::hash<Money>()(Money::fromString("64.20")),
            "value: hash");
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s CORPUS_DIRECTORY INPUTS\n", argv[0]);
        return 2;
    }
    const std::filesystem::path corpora(argv[1]);
    const long inputs = std::strtol(argv[2], nullptr, 10);
    checkHeader();
    checkValueClass();
    for (const Target &target : targets) {
        const int kept = runCorpus(target, corpora / target.name);
        runRandom(target, inputs);
        std::printf("%-8s %d kept and %ld random inputs\n", target.name, kept, inputs);
    }
    std::printf("no difference on a %s-endian machine\n",
                std::endian::native == std::endian::little ? "little" : "big");
    return 0;
}
