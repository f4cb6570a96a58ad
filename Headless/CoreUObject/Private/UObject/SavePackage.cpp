#include "UObject/SavePackage.h"

#include "Containers/StringConv.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "HAL/FileManager.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "Policies/PrettyJsonPrintPolicy.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"
#include "Serialization/PackageFileHeader.h"
#include "Serialization/PackageSerializer.h"
#include "UObject/AssetRegistryTagsContext.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

namespace
{
	using namespace UE::Headless;

	struct FObjectToSave
	{
		UObject* Object = nullptr;
		const IPackageSerializer* Serializer = nullptr;
	};

	/**
	 * The objects of the package that go into its file, outers (and classes defined in the package)
	 * before the objects that need them, otherwise in creation order.
	 */
	TArray<FObjectToSave> GatherObjectsToSave(UPackage* Package)
	{
		TArray<UObject*> Candidates;
		GetObjectsWithPackage(Package, Candidates, true);
		Candidates.RemoveAll([](const UObject* Object) { return !IsValid(Object); });
		Candidates.Sort([](const UObject* A, const UObject* B) { return A->GetUniqueID() < B->GetUniqueID(); });

		// An object is saved when it and every outer up to the package are.
		TMap<const UObject*, bool> Decisions;
		TFunction<bool(const UObject*)> IsSaved = [&](const UObject* Object) -> bool
		{
			if (Object == Package)
			{
				return true;
			}
			if (const bool* Known = Decisions.Find(Object))
			{
				return *Known;
			}
			const bool bSaved = !Object->HasAnyFlags(RF_Transient) && Object->GetOuter() && IsSaved(Object->GetOuter())
				&& FPackageSerializerRegistry::Get().FindSerializer(Object->GetClass()).ShouldSaveObject(*Object);
			Decisions.Add(Object, bSaved);
			return bSaved;
		};

		TArray<FObjectToSave> Ordered;
		TSet<const UObject*> Emitted;
		TFunction<void(UObject*)> Emit = [&](UObject* Object)
		{
			if (Object == Package || Emitted.Contains(Object) || !IsSaved(Object))
			{
				return;
			}
			Emitted.Add(Object);
			Emit(Object->GetOuter());
			UClass* Class = Object->GetClass();
			if (Class->GetPackage() == Package)
			{
				Emit(Class);
			}
			Ordered.Add(FObjectToSave{Object, &FPackageSerializerRegistry::Get().FindSerializer(Class)});
		};
		for (UObject* Object : Candidates)
		{
			Emit(Object);
		}
		return Ordered;
	}

	TArray<TPair<FName, FString>> GatherAssetTags(const UObject* Asset)
	{
		FAssetRegistryTagsContextData Data(Asset, EAssetRegistryTagsCaller::SavePackage);
		Asset->GetAssetRegistryTags(FAssetRegistryTagsContext(Data));
		TArray<TPair<FName, FString>> Tags;
		for (const FAssetRegistryTag& Tag : Data.Tags)
		{
			Tags.Emplace(Tag.Name, Tag.Value);
		}
		return Tags;
	}

	/** The whole file: the header line, then the objects pretty-printed, ending with a line break. */
	FString ComposePackageText(const FPackageFileHeader& Header, const TArray<TSharedPtr<FJsonValue>>& Entries)
	{
		const TSharedRef<FJsonObject> Body = MakeShared<FJsonObject>();
		Body->SetArrayField(TEXT("objects"), Entries);
		FString BodyText;
		const TSharedRef<TJsonWriter<TCHAR, TPrettyJsonPrintPolicy<TCHAR>>> Writer = TJsonWriterFactory<TCHAR, TPrettyJsonPrintPolicy<TCHAR>>::Create(&BodyText);
		FJsonSerializer::Serialize(Body, Writer);
		// The body's opening brace is the header line's; keep everything after its first line.
		int32 FirstLineEnd = INDEX_NONE;
		BodyText.FindChar(TEXT('\n'), FirstLineEnd);
		return Header.ToHeaderLine() + TEXT("\n") + BodyText.Mid(FirstLineEnd + 1) + TEXT("\n");
	}

	FSavePackageResultStruct SavePackageToFile(UPackage* Package, UObject* Asset, const TCHAR* InFilename, const FSavePackageArgs& SaveArgs, FString& OutError)
	{
		if (!Package)
		{
			OutError = TEXT("Cannot save: no package was given.");
			return ESavePackageResult::Error;
		}
		const FString PackageName = Package->GetName();
		const FString Filename = FPaths::ConvertRelativePathToFull(InFilename ? FString(InFilename) : FString());
		auto Fail = [&](const FString& Reason, ESavePackageResult Result = ESavePackageResult::Error)
		{
			OutError = FString::Printf(TEXT("Cannot save package '%s' to '%s': %s"), *PackageName, *Filename, *Reason);
			return FSavePackageResultStruct(Result);
		};

		if (Package->IsScriptPackage() || Package->HasAnyPackageFlags(PKG_CompiledIn) || Package == GetTransientPackage() || Package->HasAnyFlags(RF_Transient))
		{
			return Fail(TEXT("it holds reflected types or transient objects, which are never saved."));
		}
		if (Package->HasLoadError())
		{
			return Fail(FString::Printf(TEXT("loading it from '%s' failed (%s), so saving could overwrite data that was never read. Fix or remove the file, then load the package again."),
				*Package->GetLoadedPath(), *Package->GetLoadError()));
		}
		if (Asset && Asset->GetPackage() != Package)
		{
			return Fail(FString::Printf(TEXT("the asset '%s' is not in the package."), *Asset->GetPathName()));
		}

		// The file must be the package's own file inside its mounted folder.
		const FString Extension = FPaths::GetExtension(Filename, true);
		if (!FPackageName::IsPackageExtension(*Extension))
		{
			return Fail(FString::Printf(TEXT("a package file must end in %s or %s."), *FPackageName::GetAssetPackageExtension(), *FPackageName::GetMapPackageExtension()));
		}
		FText Reason;
		if (!FPackageName::IsValidLongPackageName(PackageName, false, &Reason))
		{
			return Fail(Reason.ToString());
		}
		FString Expected;
		if (!FPackageName::TryConvertLongPackageNameToFilename(PackageName, Expected, Extension, Reason))
		{
			return Fail(Reason.ToString());
		}
		if (!Expected.Equals(Filename, ESearchCase::CaseSensitive))
		{
			return Fail(FString::Printf(TEXT("the package's file is '%s'."), *Expected));
		}
		// Never replace a file whose content was not read into this package.
		const bool bLoadedFromThisFile = Package->GetLoadedPath().Equals(Expected, ESearchCase::CaseSensitive);
		if (!bLoadedFromThisFile && IFileManager::Get().FileExists(*Expected))
		{
			return Fail(TEXT("the file already exists and the package was not loaded from it. Load the package before saving it, or delete the file first."));
		}
		const FString& OtherExtension = Extension.Equals(FPackageName::GetAssetPackageExtension(), ESearchCase::IgnoreCase) ? FPackageName::GetMapPackageExtension() : FPackageName::GetAssetPackageExtension();
		FString OtherFile;
		if (FPackageName::TryConvertLongPackageNameToFilename(PackageName, OtherFile, OtherExtension) && IFileManager::Get().FileExists(*OtherFile))
		{
			return Fail(FString::Printf(TEXT("the package already has the file '%s'."), *OtherFile));
		}

		const TArray<FObjectToSave> Objects = GatherObjectsToSave(Package);
		if (Objects.Num() == 0)
		{
			return Fail(TEXT("it holds no object to save."), ESavePackageResult::EmptyPackage);
		}

		FPackageSaveContext Context(Package, Expected);
		FPackageFileHeader Header;
		Header.PackageName = PackageName;
		TArray<TSharedPtr<FJsonValue>> Entries;
		TArray<FString> Errors;
		for (const FObjectToSave& Item : Objects)
		{
			const UObject* Object = Item.Object;
			const TSharedRef<FJsonObject> Entry = MakeShared<FJsonObject>();
			Entry->SetStringField(TEXT("name"), Object->GetName());
			Entry->SetStringField(TEXT("class"), Object->GetClass()->GetPathName());
			Entry->SetStringField(TEXT("outer"), GetPathInPackage(Object->GetOuter()));
			Entry->SetStringField(TEXT("flags"), PersistedObjectFlagsToString(Object->GetMaskedFlags(RF_Load)));
			const int32 ErrorsBefore = Context.GetErrors().Num();
			Context.AddReferencedObject(Object->GetClass());
			Item.Serializer->SaveObject(*Object, *Entry, Context);
			for (int32 Index = ErrorsBefore; Index < Context.GetErrors().Num(); ++Index)
			{
				Errors.Add(FString::Printf(TEXT("object '%s': %s"), *GetPathInPackage(Object), *Context.GetErrors()[Index]));
			}
			Entries.Add(MakeShared<FJsonValueObject>(Entry));

			if (Object->GetOuter() == Package && Object->IsAsset())
			{
				FPackageFileAssetEntry AssetEntry;
				AssetEntry.ObjectName = Object->GetFName();
				AssetEntry.ClassPath = Object->GetClass()->GetPathName();
				AssetEntry.Tags = GatherAssetTags(Object);
				Header.Assets.Add(MoveTemp(AssetEntry));
			}
		}
		if (Errors.Num() > 0)
		{
			return Fail(FString::Join(Errors, TEXT("; ")) + TEXT("."));
		}
		if (Asset && !Objects.ContainsByPredicate([Asset](const FObjectToSave& Item) { return Item.Object == Asset; }))
		{
			return Fail(FString::Printf(TEXT("the asset '%s' is transient or excluded from saving."), *Asset->GetPathName()));
		}
		Header.Dependencies = Context.GetDependencies();

		const FString Text = ComposePackageText(Header, Entries);
		const FTCHARToUTF8 Utf8(*Text, Text.Len());
		TArray<uint8> Bytes;
		Bytes.Append(reinterpret_cast<const uint8*>(Utf8.Get()), Utf8.Length());
		FString WriteError;
		if (!WriteFileAtomically(Expected, Bytes, WriteError))
		{
			OutError = WriteError;
			return ESavePackageResult::Error;
		}

		Package->SetLoadedPath(Expected);
		Package->MarkAsFullyLoaded();
		Package->ClearPackageFlags(PKG_NewlyCreated);
		if (!(SaveArgs.SaveFlags & SAVE_KeepDirty))
		{
			Package->SetDirtyFlag(false);
		}
		OutError.Reset();
		OnPackageFileSaved().Broadcast(Expected, Package);
		return FSavePackageResultStruct(ESavePackageResult::Success, Bytes.Num());
	}
}

FSavePackageResultStruct UPackage::Save(UPackage* InOuter, UObject* InAsset, const TCHAR* Filename, const FSavePackageArgs& SaveArgs)
{
	FString Error;
	const FSavePackageResultStruct Result = SavePackageToFile(InOuter, InAsset, Filename, SaveArgs, Error);
	UE::Headless::SetLastPackageError(Error);
	return Result;
}

bool UPackage::SavePackage(UPackage* InOuter, UObject* Base, const TCHAR* Filename, const FSavePackageArgs& SaveArgs)
{
	return Save(InOuter, Base, Filename, SaveArgs).IsSuccessful();
}
