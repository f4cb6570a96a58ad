#include "Misc/FileHelper.h"

#include "Containers/StringConv.h"
#include "HAL/FileSystemPaths.h"
#include "Misc/Paths.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

using UE::Core::Private::ToFileSystemPath;

namespace
{
	// Leaves room for the two bytes of padding the engine adds, so sizes stay within int32.
	constexpr int64 MaxLoadableSize = int64(std::numeric_limits<int32>::max()) - 2;

	bool ReadWholeFile(const TCHAR* Filename, std::string& OutBytes)
	{
		OutBytes.clear();
		if (!Filename || !*Filename)
		{
			return false;
		}
		const fs::path Path = ToFileSystemPath(Filename);
		std::error_code Error;
		if (!fs::is_regular_file(Path, Error))
		{
			return false;
		}
		const uintmax_t Size = fs::file_size(Path, Error);
		if (Error || Size > uintmax_t(MaxLoadableSize))
		{
			return false;
		}
		std::ifstream Stream(Path, std::ios::binary);
		if (!Stream)
		{
			return false;
		}
		OutBytes.resize(size_t(Size));
		if (Size > 0 && !Stream.read(OutBytes.data(), std::streamsize(Size)))
		{
			return false;
		}
		// A file that grew while being read keeps only the size seen first, like the engine's reader.
		return true;
	}

	bool WriteBytes(const TCHAR* Filename, const char* Data, size_t Size, uint32 WriteFlags)
	{
		if (!Filename || !*Filename)
		{
			return false;
		}
		const fs::path Target = ToFileSystemPath(Filename);
		std::error_code Error;
		if (fs::is_directory(Target, Error))
		{
			return false;
		}
		const bool bExists = fs::exists(Target, Error);
		if (bExists && (WriteFlags & FILEWRITE_NoReplaceExisting))
		{
			return false;
		}
		if (bExists && (WriteFlags & FILEWRITE_EvenIfReadOnly))
		{
			fs::permissions(Target, fs::perms::owner_write, fs::perm_options::add, Error);
		}
		const FString Folder = FPaths::GetPath(FString(Filename));
		if (!Folder.IsEmpty())
		{
			IFileManager::Get().MakeDirectory(*Folder, true);
		}

		if (WriteFlags & FILEWRITE_Append)
		{
			std::ofstream Stream(Target, std::ios::binary | std::ios::app);
			return Stream && Stream.write(Data, std::streamsize(Size)) && Stream.flush();
		}

		// Write beside the target and rename over it: the rename is atomic, so the target is
		// always either the old file or the whole new one.
		fs::path Temporary = Target;
		Temporary += ".saving";
		{
			std::ofstream Stream(Temporary, std::ios::binary | std::ios::trunc);
			const bool bWritten = Stream && Stream.write(Data, std::streamsize(Size)) && Stream.flush();
			Stream.close();
			if (!bWritten || Stream.fail())
			{
				fs::remove(Temporary, Error);
				return false;
			}
		}
		if (bExists)
		{
			// Keep the permissions of the file being replaced.
			const fs::perms Permissions = fs::status(Target, Error).permissions();
			if (!Error)
			{
				fs::permissions(Temporary, Permissions, Error);
			}
		}
		fs::rename(Temporary, Target, Error);
		if (Error)
		{
			std::error_code Ignored;
			fs::remove(Temporary, Ignored);
			return false;
		}
		return true;
	}

	void AppendUtf16LE(std::string& Out, const FString& String)
	{
		Out.reserve(Out.size() + size_t(String.Len()) * 2);
		for (const TCHAR Char : String)
		{
			Out += char(uint16(Char) & 0xFF);
			Out += char(uint16(Char) >> 8);
		}
	}

	bool IsSevenBit(const FString& String)
	{
		for (const TCHAR Char : String)
		{
			if (uint16(Char) > 0x7F)
			{
				return false;
			}
		}
		return true;
	}

	void SplitLines(const FString& Text, TFunctionRef<void(FString&&)> AddLine)
	{
		const TCHAR* Cursor = *Text;
		const TCHAR* const End = Cursor + Text.Len();
		while (Cursor < End)
		{
			const TCHAR* LineStart = Cursor;
			while (Cursor < End && *Cursor != TEXT('\r') && *Cursor != TEXT('\n'))
			{
				++Cursor;
			}
			AddLine(FString::ConstructFromPtrSize(LineStart, int32(Cursor - LineStart)));
			if (Cursor < End && *Cursor == TEXT('\r'))
			{
				++Cursor;
			}
			if (Cursor < End && *Cursor == TEXT('\n'))
			{
				++Cursor;
			}
		}
	}
}

bool FFileHelper::LoadFileToArray(TArray<uint8>& Result, const TCHAR* Filename, uint32 Flags)
{
	Result.Reset();
	std::string Bytes;
	if (!ReadWholeFile(Filename, Bytes))
	{
		return false;
	}
	Result.SetNumUninitialized(int32(Bytes.size()));
	if (!Bytes.empty())
	{
		std::memcpy(Result.GetData(), Bytes.data(), Bytes.size());
	}
	return true;
}

void FFileHelper::BufferToString(FString& Result, const uint8* Buffer, int32 Size)
{
	Result.Empty();
	if (!Buffer || Size <= 0)
	{
		return;
	}

	const bool bEvenSize = (Size & 1) == 0;
	if (Size >= 2 && bEvenSize && ((Buffer[0] == 0xFF && Buffer[1] == 0xFE) || (Buffer[0] == 0xFE && Buffer[1] == 0xFF)))
	{
		const bool bLittleEndian = Buffer[0] == 0xFF;
		const int32 NumChars = Size / 2 - 1;
		std::u16string Text;
		Text.resize(size_t(NumChars));
		for (int32 Index = 0; Index < NumChars; ++Index)
		{
			const uint8 First = Buffer[2 + Index * 2];
			const uint8 Second = Buffer[3 + Index * 2];
			Text[size_t(Index)] = bLittleEndian ? char16_t(First | (Second << 8)) : char16_t((First << 8) | Second);
		}
		Result = FString(std::move(Text));
		return;
	}

	if (Size >= 3 && Buffer[0] == 0xEF && Buffer[1] == 0xBB && Buffer[2] == 0xBF)
	{
		Buffer += 3;
		Size -= 3;
	}
	const FUTF8ToTCHAR Converted(reinterpret_cast<const ANSICHAR*>(Buffer), Size);
	Result = FString::ConstructFromPtrSize(Converted.Get(), Converted.Length());
}

bool FFileHelper::LoadFileToString(FString& Result, const TCHAR* Filename, EHashOptions VerifyFlags, uint32 ReadFlags)
{
	std::string Bytes;
	if (!ReadWholeFile(Filename, Bytes))
	{
		Result.Empty();
		return false;
	}
	BufferToString(Result, reinterpret_cast<const uint8*>(Bytes.data()), int32(Bytes.size()));
	return true;
}

bool FFileHelper::LoadFileToStringArray(TArray<FString>& Result, const TCHAR* Filename)
{
	return LoadFileToStringArrayWithPredicate(Result, Filename, [](const FString&) { return true; });
}

bool FFileHelper::LoadFileToStringArrayWithPredicate(TArray<FString>& Result, const TCHAR* Filename, TFunctionRef<bool(const FString&)> Predicate)
{
	Result.Empty();
	FString Text;
	if (!LoadFileToString(Text, Filename))
	{
		return false;
	}
	SplitLines(Text, [&Result, &Predicate](FString&& Line)
		{
			if (Predicate(Line))
			{
				Result.Add(MoveTemp(Line));
			}
		});
	return true;
}

bool FFileHelper::SaveArrayToFile(const TArray<uint8>& Array, const TCHAR* Filename, IFileManager* FileManager, uint32 WriteFlags)
{
	return WriteBytes(Filename, reinterpret_cast<const char*>(Array.GetData()), size_t(Array.Num()), WriteFlags);
}

bool FFileHelper::SaveStringToFile(const FString& String, const TCHAR* Filename, EEncodingOptions EncodingOptions, IFileManager* FileManager, uint32 WriteFlags)
{
	std::string Bytes;
	if (!String.IsEmpty())
	{
		switch (EncodingOptions)
		{
		case EEncodingOptions::ForceUTF8:
		case EEncodingOptions::ForceUTF8WithoutBOM:
		{
			if (EncodingOptions == EEncodingOptions::ForceUTF8)
			{
				Bytes += "\xEF\xBB\xBF";
			}
			const FTCHARToUTF8 Utf8(*String, String.Len());
			Bytes.append(Utf8.Get(), size_t(Utf8.Length()));
			break;
		}
		case EEncodingOptions::ForceUnicode:
			Bytes += "\xFF\xFE";
			AppendUtf16LE(Bytes, String);
			break;
		case EEncodingOptions::AutoDetect:
			if (!IsSevenBit(String))
			{
				Bytes += "\xFF\xFE";
				AppendUtf16LE(Bytes, String);
				break;
			}
			[[fallthrough]];
		case EEncodingOptions::ForceAnsi:
		default:
			Bytes.reserve(size_t(String.Len()));
			for (const TCHAR Char : String)
			{
				Bytes += uint16(Char) > 0x7F ? '?' : char(Char);
			}
			break;
		}
	}
	return WriteBytes(Filename, Bytes.data(), Bytes.size(), WriteFlags);
}

bool FFileHelper::SaveStringArrayToFile(const TArray<FString>& Lines, const TCHAR* Filename, EEncodingOptions EncodingOptions, IFileManager* FileManager, uint32 WriteFlags)
{
	FString Combined;
	for (const FString& Line : Lines)
	{
		Combined += Line;
		Combined += TEXT("\n");
	}
	return SaveStringToFile(Combined, Filename, EncodingOptions, FileManager, WriteFlags);
}
