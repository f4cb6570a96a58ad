#include "Misc/AssertionMacros.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{
	// Diagnostics go to stderr as UTF-8; the string layer is not needed (and may be what failed).
	std::string NarrowForDiagnostics(const TCHAR* Text)
	{
		std::string Out;
		for (; Text && *Text; ++Text)
		{
			const char16_t Ch = *Text;
			Out.push_back(Ch < 0x80 ? static_cast<char>(Ch) : '?');
		}
		return Out;
	}
}

namespace UE::Assert::Private
{
	void OnCheckFailed(const char* Expression, const char* File, int Line, const TCHAR* Message)
	{
		std::fprintf(stderr, "Assertion failed: %s [%s:%d]%s%s\n", Expression, File, Line, Message ? " " : "",
			Message ? NarrowForDiagnostics(Message).c_str() : "");
		std::fflush(stderr);
		std::abort();
	}

	void OnEnsureFailed(const char* Expression, const char* File, int Line, const TCHAR* Message, bool& bReported)
	{
		if (bReported)
		{
			return;
		}
		bReported = true;
		std::fprintf(stderr, "Ensure condition failed: %s [%s:%d]%s%s\n", Expression, File, Line, Message ? " " : "",
			Message ? NarrowForDiagnostics(Message).c_str() : "");
	}
}

namespace UE::Core::Private
{
	void OnInvalidArrayIndex(int32 Index, int32 Num)
	{
		std::fprintf(stderr, "Array index out of bounds: %d into an array of size %d\n", Index, Num);
		std::fflush(stderr);
		std::abort();
	}
}

namespace UE::Core::Private
{
	void OnNullSharedReference()
	{
		std::fprintf(stderr, "A TSharedRef was made from a null pointer\n");
		std::fflush(stderr);
		std::abort();
	}
}
