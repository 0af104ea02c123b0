// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FUZZBCDII_H
#define FUZZBCDII_H

#include "bcdiioracle.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

//! \file
//! Turns a fuzzer's bytes into types, values and styles, and stops it at a difference.

class FuzzInput
{
public:
    FuzzInput(const BYTE *data, std::size_t size)
        : m_next(data)
        , m_end(data + size)
    {
    }

    //! 0 when the input has ended.
    BYTE byte() { return m_next != m_end ? *m_next++ : BYTE(0); }
    UINT64 word()
    {
        UINT64 w = 0;
        for (int i = 0; i < 8; ++i)
            w = w << 8 | byte();
        return w;
    }
    Oracle::Type type()
    {
        const int nall = 1 + byte() % 63;
        return {nall, byte() % 125 - 62};
    }
    BCDIIroundstyle style() { return static_cast<BCDIIroundstyle>(byte() % 6); }
    //! A valid value; a byte gives a pair of digits.
    std::vector<BYTE> value(Oracle::Type t)
    {
        Oracle::Integer units = 0;
        const BYTE count = byte();
        for (int i = 0; i < 2 * (count % 33) && i < t.nall; i += 2)
            units = units * 100 + byte() % 100;
        units %= Oracle::tenTo(t.nall);
        return Oracle::write(units, units != 0 && count >= 0x80, t);
    }
    std::string rest()
    {
        return std::string(reinterpret_cast<const char *>(m_next), m_end - m_next);
    }

private:
    const BYTE *m_next;
    const BYTE *m_end;
};

//! Bytes of exactly one size on the heap, so that the sanitizer sees every step outside.
class ExactBytes
{
public:
    explicit ExactBytes(int size)
        : m_size(std::size_t(size))
        , m_bytes(new BYTE[m_size])
    {
        std::fill_n(m_bytes.get(), m_size, BYTE(0x77));
    }
    explicit ExactBytes(const std::vector<BYTE> &bytes)
        : ExactBytes(int(bytes.size()))
    {
        std::copy(bytes.begin(), bytes.end(), m_bytes.get());
    }
    BYTE *data() { return m_bytes.get(); }
    //! Holds what an outcome leaves: its bytes, or a NaN's first byte and the rest untouched.
    bool holds(const Oracle::Outcome &expected) const
    {
        if (!expected.nan)
            return std::equal(expected.bytes.begin(), expected.bytes.end(), m_bytes.get());
        return m_bytes[0] == 101
            && std::all_of(m_bytes.get() + 1, m_bytes.get() + m_size,
                           [](BYTE b) { return b == 0x77; });
    }

private:
    std::size_t m_size;
    std::unique_ptr<BYTE[]> m_bytes;
};

inline void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "difference: %s\n", what);
    std::abort();
}

#endif // FUZZBCDII_H
