#pragma once

#include "CoreTypes.h"
#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "HAL/FileManager.h"
#include "Templates/Function.h"

/**
 * Whole-file reads and writes with the engine's text-encoding rules.
 *
 * Reading text: a UTF-16 byte-order mark (FF FE or FE FF, even file size) selects UTF-16;
 * otherwise the bytes are UTF-8, with a UTF-8 mark skipped and malformed sequences replaced.
 *
 * Writing text: AutoDetect (the default, as in the engine) writes pure 7-bit text as single
 * bytes and anything else as UTF-16LE with a mark; asset files should pass ForceUTF8WithoutBOM.
 *
 * Writes go to a temporary file beside the target that is then renamed over it, so a reader
 * never sees half a file and a failed write leaves the old one in place. Missing folders are
 * created. The FileManager parameters exist for the engine's signatures and are not consulted.
 */
struct FFileHelper
{
	enum class EHashOptions
	{
		None = 0,
		EnableVerify = 1 << 0,
		ErrorMissingHash = 1 << 1,
	};

	enum class EEncodingOptions
	{
		/** 7-bit text as bytes, anything else as UTF-16LE with a byte-order mark. */
		AutoDetect,
		/** One byte per character; characters above 0x7F become '?'. */
		ForceAnsi,
		/** UTF-16LE with a byte-order mark. */
		ForceUnicode,
		/** UTF-8 with a byte-order mark. */
		ForceUTF8,
		/** UTF-8 without a byte-order mark. */
		ForceUTF8WithoutBOM,
	};

	/** The file's bytes, or false when it cannot be read (missing, a folder, over 2 GiB). */
	static CORE_API bool LoadFileToArray(TArray<uint8>& Result, const TCHAR* Filename, uint32 Flags = 0);
	/** Decodes a text buffer by the rules above. */
	static CORE_API void BufferToString(FString& Result, const uint8* Buffer, int32 Size);
	static CORE_API bool LoadFileToString(FString& Result, const TCHAR* Filename, EHashOptions VerifyFlags = EHashOptions::None, uint32 ReadFlags = 0);
	/** One entry per line; "\r\n", "\r" and "\n" all end a line and a final line break adds no empty line. */
	static CORE_API bool LoadFileToStringArray(TArray<FString>& Result, const TCHAR* Filename);
	static CORE_API bool LoadFileToStringArrayWithPredicate(TArray<FString>& Result, const TCHAR* Filename, TFunctionRef<bool(const FString&)> Predicate);

	static CORE_API bool SaveArrayToFile(const TArray<uint8>& Array, const TCHAR* Filename, IFileManager* FileManager = &IFileManager::Get(), uint32 WriteFlags = 0);
	static CORE_API bool SaveStringToFile(const FString& String, const TCHAR* Filename, EEncodingOptions EncodingOptions = EEncodingOptions::AutoDetect, IFileManager* FileManager = &IFileManager::Get(), uint32 WriteFlags = 0);
	/** Each line followed by "\n", then saved as SaveStringToFile would. */
	static CORE_API bool SaveStringArrayToFile(const TArray<FString>& Lines, const TCHAR* Filename, EEncodingOptions EncodingOptions = EEncodingOptions::AutoDetect, IFileManager* FileManager = &IFileManager::Get(), uint32 WriteFlags = 0);
};

[[nodiscard]] constexpr FFileHelper::EHashOptions operator|(FFileHelper::EHashOptions A, FFileHelper::EHashOptions B)
{
	return FFileHelper::EHashOptions(int32(A) | int32(B));
}
