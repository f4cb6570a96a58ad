#pragma once

// The headless platform layer: fixed-width types and the engine's character model.
// Text is 16-bit throughout, as on the engine's Windows builds, so every string
// length and index the tools report matches what the editor would report.

#include <cstddef>
#include <cstdint>

using uint8 = std::uint8_t;
using uint16 = std::uint16_t;
using uint32 = std::uint32_t;
using uint64 = std::uint64_t;
using int8 = std::int8_t;
using int16 = std::int16_t;
using int32 = std::int32_t;
using int64 = std::int64_t;
using SIZE_T = std::size_t;
using SSIZE_T = std::ptrdiff_t;
using UPTRINT = std::uintptr_t;
using PTRINT = std::intptr_t;

using ANSICHAR = char;
using WIDECHAR = char16_t;
using UTF8CHAR = char8_t;
using UTF16CHAR = char16_t;
using UTF32CHAR = char32_t;
using TCHAR = char16_t;

#define TEXT_PASTE(x) u##x
#define TEXT(x) TEXT_PASTE(x)

#define FORCEINLINE inline
#define FORCENOINLINE __attribute__((noinline))
#define UE_NODISCARD [[nodiscard]]
#define LIKELY(x) __builtin_expect(!!(x), 1)
#define UNLIKELY(x) __builtin_expect(!!(x), 0)

#define PLATFORM_LINUX 1
#define PLATFORM_WINDOWS 0
#define PLATFORM_64BITS 1
#define WITH_EDITOR 1
#define WITH_EDITORONLY_DATA 1

// Module export macros are empty: every module is a static library.
#define CORE_API
#define COREUOBJECT_API
#define JSON_API
#define PROJECTS_API
#define ASSETREGISTRY_API
#define ENGINE_API
#define UNREALED_API
#define BLUEPRINTGRAPH_API
#define KISMET_API
#define KISMETCOMPILER_API
#define ANIMGRAPH_API
#define ANIMGRAPHRUNTIME_API
#define UMG_API
#define UMGEDITOR_API
#define MOVIESCENE_API
#define GAMEPLAYTAGS_API
#define GAMEPLAYTAGSEDITOR_API
#define SUBOBJECTDATAINTERFACE_API
#define AIMODULE_API

enum { INDEX_NONE = -1 };

enum EForceInit
{
	ForceInit,
	ForceInitToZero
};

enum ENoInit
{
	NoInit
};

template <typename T, std::size_t N>
char (&UE_ArrayCountHelper(const T (&)[N]))[N];
#define UE_ARRAY_COUNT(Array) (sizeof(UE_ArrayCountHelper(Array)) + 0)
