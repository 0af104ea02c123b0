// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "decimalcases.h"

#include <QtGlobal>

#include <sys/mman.h>
#include <unistd.h>

#include <new>

namespace Cases {

namespace {

constexpr UINT64 seed = 20240611;
constexpr int defaultCases = 200000;

} // namespace

int caseCount()
{
    static const int cases = [] {
        bool ok = false;
        const int wanted = qEnvironmentVariableIntValue("VANTIX_BCDII_CASES", &ok);
        return ok ? wanted : defaultCases;
    }();
    return cases;
}

void announce()
{
    qInfo("seed %llu, %d random cases per function", static_cast<unsigned long long>(seed),
          caseCount());
}

Guarded::Guarded()
    : m_page(std::size_t(sysconf(_SC_PAGESIZE)))
    , m_map(static_cast<BYTE *>(
          mmap(nullptr, 3 * m_page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)))
{
    if (m_map == MAP_FAILED || mprotect(m_map + m_page, m_page, PROT_READ | PROT_WRITE) != 0)
        throw std::bad_alloc();
}

Guarded::~Guarded()
{
    munmap(m_map, 3 * m_page);
}

Random::Random(UINT64 stream)
    : m_engine(seed * 1000003 + stream)
{
}

Type Random::type()
{
    static constexpr int counts[] = {1, 2, 3, 8, 9, 15, 16, 17, 18, 19, 31, 32, 33, 34, 62, 63};
    static constexpr int places[] = {-62, -61, -2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 16, 61, 62};
    Type t;
    t.nall = oneIn(2) ? counts[below(16)] : between(1, 63);
    if (oneIn(3))
        t.nfrac = places[below(15)];
    else if (oneIn(8))
        t.nfrac = between(-62, 62);
    else
        t.nfrac = between(0, std::min(t.nall, 62));
    return t;
}

Type Random::typeNear(Type t)
{
    if (oneIn(4))
        return type();
    t.nall = std::clamp(t.nall + between(-4, 8), 1, 63);
    t.nfrac = std::clamp(t.nfrac + between(-4, 4), -62, 62);
    return t;
}

std::vector<BYTE> Random::value(Type t)
{
    static constexpr char common[] = "0099945";
    const int digits = oneIn(2) ? t.nall : between(0, t.nall);
    const int style = below(4);
    const int tail = oneIn(3) ? between(0, digits) : 0; // digits replaced at the end
    const char tailDigit = common[below(7)];
    std::string text(std::size_t(t.nall - digits), '0');
    for (int i = 0; i < digits; ++i) {
        if (i >= digits - tail)
            text += tailDigit;
        else
            text += style == 0 ? common[below(7)] : style == 1 ? '9' : char('0' + below(10));
    }
    Oracle::Integer units = 0;
    for (char c : text)
        units = units * 10 + (c - '0');
    return Oracle::write(units, units != 0 && oneIn(2), t);
}

BCDIIroundstyle Random::roundStyle()
{
    static constexpr int styles[] = {0, 0, 1, 2, 3, 4, 5, 7};
    return static_cast<BCDIIroundstyle>(styles[below(8)]);
}

INT64 Random::integer()
{
    static constexpr INT64 special[] = {0,
                                        1,
                                        -1,
                                        9,
                                        10,
                                        99,
                                        100,
                                        std::numeric_limits<INT64>::max(),
                                        std::numeric_limits<INT64>::min(),
                                        9999999999999999,
                                        10000000000000000};
    if (oneIn(8))
        return special[below(11)];
    return static_cast<INT64>(bits()) >> below(64);
}

int Random::fractionDigits()
{
    static constexpr int far[] = {-2147483647 - 1, 2147483647, -301, 301, 127, 128, -128, 63, -63};
    return oneIn(20) ? far[below(9)] : oneIn(2) ? between(0, 20) : between(-70, 70);
}

std::string hex(const BYTE *bytes, int size)
{
    return QByteArray(reinterpret_cast<const char *>(bytes), size).toHex(' ').toStdString();
}

std::string hex(const std::vector<BYTE> &bytes)
{
    return hex(bytes.data(), int(bytes.size()));
}

std::string name(Type t)
{
    return '(' + std::to_string(t.nall) + ',' + std::to_string(t.nfrac) + ')';
}

bool Destination::check(const char *what, UINT32 status, const Outcome &expected,
                        const std::string &from)
{
    if (status == expected.status && memory.holds(expected, before))
        return true;
    qWarning("%s: %s into %s: status %u, bytes %s; expected %u, %s", what, from.c_str(),
             name(type).c_str(), status, hex(memory.data(), type.size()).c_str(), expected.status,
             expected.nan ? "NaN" : hex(expected.bytes).c_str());
    return false;
}

Type typeOf(int word)
{
    return {static_cast<std::int8_t>(word >> 8), static_cast<std::int8_t>(word & 0xFF)};
}

std::vector<BYTE> valueOf(Type t, const char *text)
{
    Oracle::ParseOutcome wide = Oracle::parse(text, {63, 20});
    return Oracle::store(Oracle::read(wide.value.bytes.data(), wide.type), t, BCDII_ROUND_TRUNC)
        .bytes;
}

std::string textOf(const void *bytes, Type t)
{
    return BCDII2StringSequence(bytes, t.word()).c_str();
}

std::string resultText(const void *bytes, Type t)
{
    return *static_cast<const BYTE *>(bytes) == 101 ? "NaN" : textOf(bytes, t);
}

bool isSame(const BYTE *result, const Outcome &expected)
{
    return expected.nan ? result[0] == 101
                        : std::equal(expected.bytes.begin(), expected.bytes.end(), result);
}

bool isSame(const BYTE *result, const BYTE *expected, Type t)
{
    return expected[0] == 101 ? result[0] == 101
                              : std::equal(expected, expected + t.size(), result);
}

std::vector<Type> shortTypes(int digits, int lowest, int highest)
{
    std::vector<Type> types;
    for (int nall = 1; nall <= digits; ++nall) {
        for (int nfrac = lowest; nfrac <= highest; ++nfrac)
            types.push_back({nall, nfrac});
    }
    return types;
}

Result operate(Operation operation, const QByteArray &a, Type at, const QByteArray &b, Type bt,
               Type t, BCDIIroundstyle rs)
{
    Guarded memory;
    memory.take(t.size(), true);
    Result result;
    result.status = operation(memory.data(), t.word(), valueOf(at, a).data(), at.word(),
                              valueOf(bt, b).data(), bt.word(), rs);
    result.text = memory.isIntact() ? resultText(memory.data(), t) : "outside";
    return result;
}

int wrongShortResults(Operation operation, OracleOperation oracle)
{
    const std::vector<Type> types = shortTypes(exhaustiveDigits - 1, -1, 2);
    const Type results[] = {{2, 1}, {3, 0}, {4, 3}};
    int wrong = 0;
    BYTE result[8];
    for (Type at : types) {
        for (Type bt : types) {
            everyValue(at, [&](const std::vector<BYTE> &a) {
                const Number x = Oracle::read(a.data(), at);
                everyValue(bt, [&](const std::vector<BYTE> &b) {
                    const auto style = static_cast<BCDIIroundstyle>((a.back() + b.back()) % 5);
                    const Type d = results[(a.front() + b.back()) % 3];
                    const UINT32 status = operation(result, d.word(), a.data(), at.word(), b.data(),
                                                    bt.word(), style);
                    const Outcome o = oracle(x, Oracle::read(b.data(), bt), d, style);
                    wrong += status != o.status || !isSame(result, o) ? 1 : 0;
                });
            });
        }
    }
    return wrong;
}

int wrongResultsOverOperands(Operation operation)
{
    constexpr BCDIIroundstyle nearest = BCDII_ROUND_NEAREST;
    Random random(6);
    int wrong = 0;
    for (int i = 0; i < caseCount() / 10; ++i) {
        const Type t = random.type();
        const Type d = random.typeNear(t);
        const std::vector<BYTE> a = random.value(t);
        const std::vector<BYTE> b = random.value(t);
        BYTE apart[40] = {};
        BYTE twice[40] = {};
        const UINT32 status =
            operation(apart, d.word(), a.data(), t.word(), b.data(), t.word(), nearest);
        const UINT32 twiceStatus =
            operation(twice, d.word(), a.data(), t.word(), a.data(), t.word(), nearest);
        BYTE overFirst[40] = {};
        BYTE overSecond[40] = {};
        BYTE overBoth[40] = {};
        std::copy(a.begin(), a.end(), overFirst);
        std::copy(b.begin(), b.end(), overSecond);
        std::copy(a.begin(), a.end(), overBoth);
        const bool same =
            operation(overFirst, d.word(), overFirst, t.word(), b.data(), t.word(), nearest)
                == status
            && isSame(overFirst, apart, d)
            && operation(overSecond, d.word(), a.data(), t.word(), overSecond, t.word(), nearest)
                == status
            && isSame(overSecond, apart, d)
            && operation(overBoth, d.word(), overBoth, t.word(), overBoth, t.word(), nearest)
                == twiceStatus
            && isSame(overBoth, twice, d);
        wrong += same ? 0 : 1;
    }
    return wrong;
}

} // namespace Cases
