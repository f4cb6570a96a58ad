#include "Policies/JsonPrintPolicy.h"

#include "Containers/UnrealString.h"
#include "Serialization/JsonWriter.h"

#include <charconv>
#include <cstring>
#include <cstdlib>
#include <new>
#include <limits>
#include <utility>

#include <emmintrin.h>

namespace
{
	/** One bit per byte of the units that end plain text: quotes, backslashes, control characters. */
	FORCEINLINE unsigned StopMask(__m128i Units)
	{
		const __m128i IsControl = _mm_cmpeq_epi16(_mm_subs_epu16(Units, _mm_set1_epi16(0x1F)), _mm_setzero_si128());
		const __m128i IsQuote = _mm_cmpeq_epi16(Units, _mm_set1_epi16('"'));
		const __m128i IsBackslash = _mm_cmpeq_epi16(Units, _mm_set1_epi16('\\'));
		return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(IsQuote, IsBackslash), IsControl)));
	}

	/**
	 * Index of the first code unit that needs an escape (see PlainTextRunLength), or Count. Eight
	 * units are tested at a time, the last eight overlapping the block before them instead of
	 * leaving a tail. Shorter strings, most member names among them, are loaded as two overlapping
	 * halves and tested at once; only a string that does need an escape is then searched unit by unit.
	 */
	int32 FindFirstEscape(const TCHAR* Chars, int32 Count)
	{
		if (Count >= 8)
		{
			int32 Index = 0;
			for (; Index + 8 < Count; Index += 8)
			{
				if (const unsigned Mask = StopMask(_mm_loadu_si128(reinterpret_cast<const __m128i*>(Chars + Index))))
				{
					return Index + __builtin_ctz(Mask) / 2;
				}
			}
			// Units before Index were clean, so the first stop here is at Index or later.
			const int32 Last = Count - 8;
			const unsigned Mask = StopMask(_mm_loadu_si128(reinterpret_cast<const __m128i*>(Chars + Last)));
			return Mask ? Last + __builtin_ctz(Mask) / 2 : Count;
		}

		__m128i Units;
		if (Count >= 4)
		{
			const __m128i Head = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(Chars));
			const __m128i Tail = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(Chars + Count - 4));
			Units = _mm_unpacklo_epi64(Head, Tail);
		}
		else if (Count >= 2)
		{
			int32 Head;
			int32 Tail;
			std::memcpy(&Head, Chars, sizeof(Head));
			std::memcpy(&Tail, Chars + Count - 2, sizeof(Tail));
			Units = _mm_set_epi32(Tail, Head, Tail, Head);
		}
		else if (Count == 1)
		{
			Units = _mm_set1_epi16(static_cast<short>(Chars[0]));
		}
		else
		{
			return 0;
		}
		if (LIKELY(StopMask(Units) == 0))
		{
			return Count;
		}
		int32 Index = 0;
		while (Chars[Index] != TCHAR('"') && Chars[Index] != TCHAR('\\') && Chars[Index] >= 0x20)
		{
			++Index;
		}
		return Index;
	}

	/** memcpy for the short runs that dominate JSON text, without a call for under 16 units. */
	FORCEINLINE void CopyUnits(TCHAR* Dest, const TCHAR* Source, int32 Count)
	{
		if (Count >= 16)
		{
			std::memcpy(Dest, Source, static_cast<size_t>(Count) * sizeof(TCHAR));
		}
		else if (Count >= 8)
		{
			const __m128i Head = _mm_loadu_si128(reinterpret_cast<const __m128i*>(Source));
			const __m128i Tail = _mm_loadu_si128(reinterpret_cast<const __m128i*>(Source + Count - 8));
			_mm_storeu_si128(reinterpret_cast<__m128i*>(Dest), Head);
			_mm_storeu_si128(reinterpret_cast<__m128i*>(Dest + Count - 8), Tail);
		}
		else if (Count >= 4)
		{
			uint64 Head;
			uint64 Tail;
			std::memcpy(&Head, Source, sizeof(Head));
			std::memcpy(&Tail, Source + Count - 4, sizeof(Tail));
			std::memcpy(Dest, &Head, sizeof(Head));
			std::memcpy(Dest + Count - 4, &Tail, sizeof(Tail));
		}
		else
		{
			for (int32 Index = 0; Index < Count; ++Index)
			{
				Dest[Index] = Source[Index];
			}
		}
	}

	// The buffer of the last stream closed on this thread, kept for the next one: a tool answers
	// each request by printing megabytes, and reusing the memory saves faulting in fresh pages for
	// every answer. Larger buffers than this are given back.
	constexpr int32 MaxRetainedChars = 8 * 1024 * 1024;

	thread_local TCHAR* RetainedData = nullptr;
	thread_local int32 RetainedMax = 0;
}

FJsonPrintStream::FJsonPrintStream()
	: Data(RetainedData)
	, Max(RetainedMax)
{
	RetainedData = nullptr;
	RetainedMax = 0;
}

FJsonPrintStream::~FJsonPrintStream()
{
	if (Max > RetainedMax && Max <= MaxRetainedChars)
	{
		std::swap(Data, RetainedData);
		RetainedMax = Max;
	}
	std::free(Data);
}

void FJsonPrintStream::Grow(int32 Extra)
{
	// Doubling keeps appends amortised constant; a graph read prints megabytes in one go, and
	// realloc can move a large block by remapping it instead of copying.
	int64 NewMax = Max > 0 ? static_cast<int64>(Max) * 2 : 256;
	while (NewMax < static_cast<int64>(Num) + Extra)
	{
		NewMax *= 2;
	}
	checkf(NewMax <= std::numeric_limits<int32>::max(), TEXT("JSON output larger than 2^31 characters"));
	TCHAR* NewData = static_cast<TCHAR*>(std::realloc(Data, static_cast<size_t>(NewMax) * sizeof(TCHAR)));
	if (!NewData)
	{
		throw std::bad_alloc();
	}
	Data = NewData;
	Max = static_cast<int32>(NewMax);
}

void FJsonPrintStream::WriteAscii(const char* Chars, int32 Count)
{
	if (Max - Num < Count)
	{
		Grow(Count);
	}
	for (int32 Index = 0; Index < Count; ++Index)
	{
		Data[Num + Index] = static_cast<TCHAR>(Chars[Index]);
	}
	Num += Count;
}

void FJsonPrintStream::WriteQuoted(const TCHAR* Chars, int32 Count)
{
	// Nearly every string is plain: one capacity check, one scan and one copy.
	const int32 Plain = FindFirstEscape(Chars, Count);
	if (Max - Num < Plain + 2)
	{
		Grow(Plain + 2);
	}
	Data[Num] = TCHAR('"');
	CopyUnits(Data + Num + 1, Chars, Plain);
	Num += Plain + 1;
	if (Plain < Count)
	{
		WriteEscaped(Chars + Plain, Count - Plain);
	}
	Write(TCHAR('"'));
}

void FJsonPrintStream::WriteEscaped(const TCHAR* Chars, int32 Count)
{
	const TCHAR* Cursor = Chars;
	const TCHAR* const End = Chars + Count;
	while (true)
	{
		const int32 Run = FindFirstEscape(Cursor, static_cast<int32>(End - Cursor));
		Write(Cursor, Run);
		Cursor += Run;
		if (Cursor == End)
		{
			return;
		}

		switch (const TCHAR Char = *Cursor++)
		{
		case TCHAR('"'): WriteAscii("\\\"", 2); break;
		case TCHAR('\\'): WriteAscii("\\\\", 2); break;
		case TCHAR('\b'): WriteAscii("\\b", 2); break;
		case TCHAR('\f'): WriteAscii("\\f", 2); break;
		case TCHAR('\n'): WriteAscii("\\n", 2); break;
		case TCHAR('\r'): WriteAscii("\\r", 2); break;
		case TCHAR('\t'): WriteAscii("\\t", 2); break;
		default:
		{
			static constexpr char HexDigits[] = "0123456789abcdef";
			const char Escape[6] = {'\\', 'u', '0', '0', HexDigits[(Char >> 4) & 0xF], HexDigits[Char & 0xF]};
			WriteAscii(Escape, 6);
			break;
		}
		}
	}
}

void FJsonPrintStream::WriteDouble(double Value)
{
	// std::to_chars with an explicit precision prints exactly what printf's %g with that
	// precision prints, including "nan", "-nan", "inf" and the two-digit exponent.
	char Buffer[64];
	const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value, std::chars_format::general, 17);
	WriteAscii(Buffer, static_cast<int32>(Result.ptr - Buffer));
}

void FJsonPrintStream::WriteFloat(float Value)
{
	char Buffer[64];
	const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), static_cast<double>(Value), std::chars_format::general, 6);
	WriteAscii(Buffer, static_cast<int32>(Result.ptr - Buffer));
}

void FJsonPrintStream::WriteInt64(int64 Value)
{
	char Buffer[24];
	const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
	WriteAscii(Buffer, static_cast<int32>(Result.ptr - Buffer));
}

void FJsonPrintStream::WriteUInt64(uint64 Value)
{
	char Buffer[24];
	const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
	WriteAscii(Buffer, static_cast<int32>(Result.ptr - Buffer));
}

void FJsonPrintStream::CopyTo(FString& Out) const
{
	Out = FString(std::u16string_view(Data ? Data : u"", static_cast<size_t>(Num)));
}

FString EscapeJsonString(const FString& StringVal)
{
	FJsonPrintStream Stream;
	Stream.WriteQuoted(*StringVal, StringVal.Len());
	FString Result;
	Stream.CopyTo(Result);
	return Result;
}
