#pragma once

#include "CoreMinimal.h"

#include <emmintrin.h>

namespace UE::Json::Private
{
	/**
	 * Length of the run of plain string text at Begin: text that needs no escape in JSON, which ends
	 * at a quote, a backslash or a control character (below U+0020). The reader copies such runs in
	 * bulk and the writer prints them unchanged; eight UTF-16 units are tested at a time. When
	 * bNoteSurrogates is set, OutSawSurrogate is set if the run holds a surrogate code unit.
	 */
	template <bool bNoteSurrogates = false>
	inline int64 PlainTextRunLength(const TCHAR* Begin, const TCHAR* End, bool* OutSawSurrogate = nullptr)
	{
		const TCHAR* Cursor = Begin;
		const __m128i Quote = _mm_set1_epi16('"');
		const __m128i Backslash = _mm_set1_epi16('\\');
		const __m128i LastControl = _mm_set1_epi16(0x1F);
		const __m128i SurrogateBits = _mm_set1_epi16(static_cast<short>(0xF800));
		const __m128i Surrogate = _mm_set1_epi16(static_cast<short>(0xD800));
		__m128i Surrogates = _mm_setzero_si128();
		int64 Length = -1;
		while (End - Cursor >= 8)
		{
			const __m128i Units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(Cursor));
			// A unit is a control character when subtracting 0x1F with saturation leaves zero.
			const __m128i IsControl = _mm_cmpeq_epi16(_mm_subs_epu16(Units, LastControl), _mm_setzero_si128());
			const __m128i Stops = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi16(Units, Quote), _mm_cmpeq_epi16(Units, Backslash)), IsControl);
			if constexpr (bNoteSurrogates)
			{
				// Units past the end of the run may be counted too; a false alarm only costs a scan.
				Surrogates = _mm_or_si128(Surrogates, _mm_cmpeq_epi16(_mm_and_si128(Units, SurrogateBits), Surrogate));
			}
			const int Mask = _mm_movemask_epi8(Stops);
			if (Mask != 0)
			{
				Length = (Cursor - Begin) + __builtin_ctz(static_cast<unsigned>(Mask)) / 2;
				break;
			}
			Cursor += 8;
		}
		if (Length < 0)
		{
			while (Cursor != End && *Cursor != TCHAR('"') && *Cursor != TCHAR('\\') && *Cursor >= 0x20)
			{
				if constexpr (bNoteSurrogates)
				{
					if ((*Cursor & 0xF800) == 0xD800)
					{
						*OutSawSurrogate = true;
					}
				}
				++Cursor;
			}
			Length = Cursor - Begin;
		}
		if constexpr (bNoteSurrogates)
		{
			if (_mm_movemask_epi8(Surrogates) != 0)
			{
				*OutSawSurrogate = true;
			}
		}
		return Length;
	}
}
