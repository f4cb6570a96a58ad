#include "Policies/JsonPrintPolicy.h"

#include "Containers/UnrealString.h"
#include "Serialization/JsonTextScan.h"
#include "Serialization/JsonWriter.h"

#include <charconv>
#include <cstdlib>
#include <new>
#include <utility>
#include <limits>

namespace
{
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

void FJsonPrintStream::WriteEscaped(const TCHAR* Chars, int32 Count)
{
	const TCHAR* Cursor = Chars;
	const TCHAR* const End = Chars + Count;
	while (true)
	{
		const int32 Run = static_cast<int32>(UE::Json::Private::PlainTextRunLength(Cursor, End));
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
	Stream.Write(TCHAR('"'));
	Stream.WriteEscaped(*StringVal, StringVal.Len());
	Stream.Write(TCHAR('"'));
	FString Result;
	Stream.CopyTo(Result);
	return Result;
}
