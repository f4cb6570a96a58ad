#pragma once

#include "HAL/Platform.h"

// Assertions follow the engine's split: check() guards programming errors and stops the
// process, ensure() reports once per call site and lets the caller recover. Neither is
// compiled out, because the headless editor's tests rely on them to surface misuse.
namespace UE::Assert::Private
{
	[[noreturn]] CORE_API void OnCheckFailed(const char* Expression, const char* File, int Line, const TCHAR* Message);
	CORE_API void OnEnsureFailed(const char* Expression, const char* File, int Line, const TCHAR* Message, bool& bReported);
}

// The message forms take the engine's TEXT() formats; they expand at the call site, where
// FString (Containers/UnrealString.h) is visible through CoreMinimal.h.
#define check(expr) \
	do { if (UNLIKELY(!(expr))) ::UE::Assert::Private::OnCheckFailed(#expr, __FILE__, __LINE__, nullptr); } while (0)
#define checkf(expr, format, ...) \
	do { if (UNLIKELY(!(expr))) ::UE::Assert::Private::OnCheckFailed(#expr, __FILE__, __LINE__, *FString::Printf(format, ##__VA_ARGS__)); } while (0)
#define checkNoEntry() ::UE::Assert::Private::OnCheckFailed("Enclosing block should never be called", __FILE__, __LINE__, nullptr)
#define unimplemented() ::UE::Assert::Private::OnCheckFailed("Unimplemented function called", __FILE__, __LINE__, nullptr)
#define verify(expr) check(expr)
#define verifyf(expr, format, ...) checkf(expr, format, ##__VA_ARGS__)
#define checkSlow(expr) check(expr)

#define ensure(expr) \
	(LIKELY(!!(expr)) || [] { static bool bReported = false; ::UE::Assert::Private::OnEnsureFailed(#expr, __FILE__, __LINE__, nullptr, bReported); return false; }())
#define ensureMsgf(expr, format, ...) \
	(LIKELY(!!(expr)) || [&] { static bool bReported = false; ::UE::Assert::Private::OnEnsureFailed(#expr, __FILE__, __LINE__, *FString::Printf(format, ##__VA_ARGS__), bReported); return false; }())
#define ensureAlways(expr) ensure(expr)
#define ensureAlwaysMsgf(expr, format, ...) ensureMsgf(expr, format, ##__VA_ARGS__)
