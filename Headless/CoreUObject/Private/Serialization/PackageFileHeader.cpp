#include "Serialization/PackageFileHeader.h"

#include "Containers/StringConv.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Misc/PackageNamePrivate.h"
#include "Policies/CondensedJsonPrintPolicy.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace
{
	// A header names a few assets, tags and dependencies; anything longer than this is not one.
	constexpr size_t MaxHeaderBytes = 4 * 1024 * 1024;

	TSharedPtr<FJsonValue> MakeString(const FString& Value)
	{
		return MakeShared<FJsonValueString>(Value);
	}
}

namespace UE::Headless
{
	const TCHAR* GetPackageFileFormatName()
	{
		return TEXT("calvorn-package");
	}

	FString FPackageFileHeader::ToHeaderLine() const
	{
		TSharedRef<FJsonObject> Root = MakeShared<FJsonObject>();
		Root->SetStringField(TEXT("format"), GetPackageFileFormatName());
		Root->SetNumberField(TEXT("version"), Version);
		Root->SetStringField(TEXT("package"), PackageName);

		TArray<TSharedPtr<FJsonValue>> AssetValues;
		for (const FPackageFileAssetEntry& Asset : Assets)
		{
			TSharedRef<FJsonObject> AssetObject = MakeShared<FJsonObject>();
			AssetObject->SetStringField(TEXT("name"), Asset.ObjectName.ToString());
			AssetObject->SetStringField(TEXT("class"), Asset.ClassPath);
			TArray<TPair<FName, FString>> SortedTags = Asset.Tags;
			SortedTags.StableSort([](const TPair<FName, FString>& A, const TPair<FName, FString>& B) { return A.Key.ToString().Compare(B.Key.ToString(), ESearchCase::IgnoreCase) < 0; });
			TSharedRef<FJsonObject> TagObject = MakeShared<FJsonObject>();
			for (const TPair<FName, FString>& Tag : SortedTags)
			{
				TagObject->SetStringField(Tag.Key.ToString(), Tag.Value);
			}
			AssetObject->SetObjectField(TEXT("tags"), TagObject);
			AssetValues.Add(MakeShared<FJsonValueObject>(AssetObject));
		}
		Root->SetArrayField(TEXT("assets"), AssetValues);

		TArray<FString> SortedDependencies;
		for (const FName& Dependency : Dependencies)
		{
			SortedDependencies.AddUnique(Dependency.ToString());
		}
		SortedDependencies.Sort([](const FString& A, const FString& B) { return A.Compare(B, ESearchCase::IgnoreCase) < 0; });
		TArray<TSharedPtr<FJsonValue>> DependencyValues;
		for (const FString& Dependency : SortedDependencies)
		{
			DependencyValues.Add(MakeString(Dependency));
		}
		Root->SetArrayField(TEXT("dependencies"), DependencyValues);

		FString Line;
		const TSharedRef<TJsonWriter<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>> Writer = TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>::Create(&Line);
		FJsonSerializer::Serialize(Root, Writer);
		// Leave the object open: the objects follow on the next lines of the same document.
		if (Line.EndsWith(TEXT("}")))
		{
			Line.LeftChopInline(1);
		}
		return Line + TEXT(",");
	}

	bool FPackageFileHeader::FromHeaderLine(const FString& InLine, FString& OutReason)
	{
		FString Line = InLine.TrimEnd();
		if (Line.EndsWith(TEXT(",")))
		{
			Line = Line.LeftChop(1) + TEXT("}");
		}
		TSharedPtr<FJsonObject> Root;
		const TSharedRef<TJsonReader<TCHAR>> Reader = TJsonReaderFactory<TCHAR>::CreateFromView(*Line, Line.Len());
		if (!FJsonSerializer::Deserialize(Reader, Root) || !Root.IsValid())
		{
			OutReason = FString::Printf(TEXT("its first line is not a package header (%s)"), *Reader->GetErrorMessage());
			return false;
		}
		FString Format;
		if (!Root->TryGetStringField(TEXT("format"), Format) || Format != GetPackageFileFormatName())
		{
			OutReason = FString::Printf(TEXT("it is not a package file (its \"format\" is not \"%s\")"), GetPackageFileFormatName());
			return false;
		}
		int32 ReadVersion = 0;
		if (!Root->TryGetNumberField(TEXT("version"), ReadVersion) || ReadVersion < 1)
		{
			OutReason = TEXT("its \"version\" is missing or invalid");
			return false;
		}
		if (ReadVersion > PackageFileFormatVersion)
		{
			OutReason = FString::Printf(TEXT("it was written in format version %d by a newer program (this one reads up to version %d)"), ReadVersion, PackageFileFormatVersion);
			return false;
		}

		FPackageFileHeader Result;
		Result.Version = ReadVersion;
		if (!Root->TryGetStringField(TEXT("package"), Result.PackageName))
		{
			OutReason = TEXT("its header has no \"package\" name");
			return false;
		}
		const TArray<TSharedPtr<FJsonValue>>* AssetValues = nullptr;
		if (Root->TryGetArrayField(TEXT("assets"), AssetValues))
		{
			for (const TSharedPtr<FJsonValue>& AssetValue : *AssetValues)
			{
				const TSharedPtr<FJsonObject>* AssetObject = nullptr;
				FString Name;
				FPackageFileAssetEntry Entry;
				if (!AssetValue.IsValid() || !AssetValue->TryGetObject(AssetObject) || !(*AssetObject)->TryGetStringField(TEXT("name"), Name)
					|| !(*AssetObject)->TryGetStringField(TEXT("class"), Entry.ClassPath) || Name.IsEmpty())
				{
					OutReason = TEXT("an entry of its header's \"assets\" lacks a \"name\" or \"class\"");
					return false;
				}
				Entry.ObjectName = FName(Name);
				const TSharedPtr<FJsonObject>* TagObject = nullptr;
				if ((*AssetObject)->TryGetObjectField(TEXT("tags"), TagObject))
				{
					for (const auto& Tag : (*TagObject)->Values)
					{
						FString Value;
						if (!Tag.Value.IsValid() || Tag.Value->Type != EJson::String || !Tag.Value->TryGetString(Value))
						{
							OutReason = FString::Printf(TEXT("the tag \"%s\" of asset '%s' is not a string"), *Tag.Key, *Name);
							return false;
						}
						Entry.Tags.Emplace(FName(Tag.Key), Value);
					}
				}
				Result.Assets.Add(MoveTemp(Entry));
			}
		}
		const TArray<TSharedPtr<FJsonValue>>* DependencyValues = nullptr;
		if (Root->TryGetArrayField(TEXT("dependencies"), DependencyValues))
		{
			for (const TSharedPtr<FJsonValue>& DependencyValue : *DependencyValues)
			{
				FString Dependency;
				if (!DependencyValue.IsValid() || DependencyValue->Type != EJson::String || !DependencyValue->TryGetString(Dependency) || Dependency.IsEmpty())
				{
					OutReason = TEXT("an entry of its header's \"dependencies\" is not a package name");
					return false;
				}
				Result.Dependencies.Add(FName(Dependency));
			}
		}
		*this = MoveTemp(Result);
		return true;
	}

	bool ReadPackageFileHeader(const FString& Filename, FPackageFileHeader& OutHeader, FString& OutError)
	{
		const std::string NativePath = UE::CoreUObject::Private::ToFileSystemPath(Filename).string();
		const int File = ::open(NativePath.c_str(), O_RDONLY | O_CLOEXEC);
		if (File < 0)
		{
			OutError = FString::Printf(TEXT("Cannot read package file '%s': %s."), *Filename, UTF8_TO_TCHAR(std::strerror(errno)));
			return false;
		}
		std::string Bytes;
		char Buffer[4096];
		bool bFoundLineEnd = false;
		while (!bFoundLineEnd && Bytes.size() < MaxHeaderBytes)
		{
			const ssize_t Read = ::read(File, Buffer, sizeof(Buffer));
			if (Read < 0)
			{
				if (errno == EINTR)
				{
					continue;
				}
				const int Error = errno;
				::close(File);
				OutError = FString::Printf(TEXT("Cannot read package file '%s': %s."), *Filename, UTF8_TO_TCHAR(std::strerror(Error)));
				return false;
			}
			if (Read == 0)
			{
				break;
			}
			const char* LineEnd = static_cast<const char*>(std::memchr(Buffer, '\n', size_t(Read)));
			Bytes.append(Buffer, LineEnd ? size_t(LineEnd - Buffer) : size_t(Read));
			bFoundLineEnd = LineEnd != nullptr;
		}
		::close(File);
		if (!bFoundLineEnd && Bytes.size() >= MaxHeaderBytes)
		{
			OutError = FString::Printf(TEXT("Package file '%s' is not a package file: its first line is longer than %d bytes."), *Filename, int32(MaxHeaderBytes));
			return false;
		}
		// A UTF-8 byte-order mark is tolerated, as every text reader of the engine tolerates it.
		if (Bytes.size() >= 3 && Bytes.compare(0, 3, "\xEF\xBB\xBF") == 0)
		{
			Bytes.erase(0, 3);
		}
		const FUTF8ToTCHAR Converted(reinterpret_cast<const UTF8CHAR*>(Bytes.data()), int32(Bytes.size()));
		const FString Line = FString::ConstructFromPtrSize(Converted.Get(), Converted.Length());
		FString Reason;
		if (!OutHeader.FromHeaderLine(Line, Reason))
		{
			OutError = FString::Printf(TEXT("Package file '%s' cannot be read: %s."), *Filename, *Reason);
			return false;
		}
		return true;
	}
}
