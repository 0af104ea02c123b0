// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TEXTUNITS_H
#define TEXTUNITS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#ifdef __SSE2__
constexpr std::ptrdiff_t blockBytes = 64; //!< that wantedIn() looks at

//! Which of the blockBytes bytes from \a block on are \a wanted: a bit for each, the lowest for
//! the first.
inline std::uint64_t wantedIn(const char *block, char wanted)
{
    const __m128i all = _mm_set1_epi8(wanted);
    std::uint64_t bits = 0;
    for (int part = 0; part < 4; ++part) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(block) + part);
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, all)));
        bits |= static_cast<std::uint64_t>(mask) << (16 * part);
    }
    return bits;
}
#endif

//! How many bytes a text's characters are made of, and where ASCII characters are in it.
struct TextUnits
{
    int bytes = 1;            //!< of a unit: 1, 2 or 4
    bool isBigEndian = false; //!< the highest byte of a unit comes first

    //! Where \a wanted, an ASCII character, is first between \a from, which is where a
    //! unit begins, and \a end; \a end if it is nowhere. A unit that is cut off is none.
    const char *find(const char *from, const char *end, char wanted) const
    {
        if (bytes > 1)
            return findWide(from, end, wanted);
        const void *found = std::memchr(from, wanted, static_cast<std::size_t>(end - from));
        return found ? static_cast<const char *>(found) : end;
    }

    //! Whether the unit at \a place is \a wanted, an ASCII character.
    bool isAt(const char *place, char wanted) const
    {
        for (int i = 0; i < bytes; ++i) {
            if (place[i] != (i == valueByte() ? wanted : '\0'))
                return false;
        }
        return true;
    }

private:
    int valueByte() const { return isBigEndian ? bytes - 1 : 0; }

    const char *findWide(const char *from, const char *end, char wanted) const
    {
        const char *place = from;
        while (end - place >= bytes) {
            const char *first = place + valueByte();
            const void *found = std::memchr(first, wanted, static_cast<std::size_t>(end - first));
            if (!found)
                return end;
            const auto offset = static_cast<const char *>(found) - from;
            place = from + offset / bytes * bytes;
            if (offset % bytes == valueByte() && end - place >= bytes && isAt(place, wanted))
                return place;
            // The byte belongs to another character, or to a later one's middle.
            place += bytes;
        }
        return end;
    }
};

#endif // TEXTUNITS_H
