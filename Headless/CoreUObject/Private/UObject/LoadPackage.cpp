#include "UObject/UObjectGlobals.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "HAL/FileManager.h"
#include "Misc/FileHelper.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/PackageFileHeader.h"
#include "Serialization/PackageSerializer.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/ObjectPtr.h"
#include "Templates/Casts.h"

namespace
{
	using namespace UE::Headless;

	// Enough to say what is wrong with a file without flooding the message.
	constexpr int32 MaxReportedErrors = 8;

	/** Packages whose objects exist but are still being read; a load that comes back to one of them (a cycle) gets it as it is. */
	TArray<UPackage*>& PackagesBeingLoaded()
	{
		static TArray<UPackage*> Packages;
		return Packages;
	}

	struct FLoadedObject
	{
		UObject* Object = nullptr;
		const FJsonObject* Entry = nullptr;
		const IPackageSerializer* Serializer = nullptr;
	};

	/** Reads one package file into Package; on failure every object it made is marked as garbage. */
	class FPackageReader
	{
	public:
		FPackageReader(UPackage* InPackage, const FString& InFilename, uint32 InLoadFlags)
			: Package(InPackage)
			, Filename(InFilename)
			, LoadFlags(InLoadFlags)
			, Context(InPackage, InFilename)
		{
		}

		bool Read(FString& OutReason)
		{
			const bool bRead = ReadFile() && CreateObjects() && LoadDependencies() && ReadObjects() && PostLoadObjects();
			if (!bRead)
			{
				// Newest first, so nothing outlives... nothing: inner objects go before their outers.
				for (int32 Index = Created.Num() - 1; Index >= 0; --Index)
				{
					Created[Index]->MarkAsGarbage();
				}
				TArray<FString> Shown = Errors;
				if (Shown.Num() > MaxReportedErrors)
				{
					const int32 Hidden = Shown.Num() - MaxReportedErrors;
					Shown.SetNum(MaxReportedErrors);
					Shown.Add(FString::Printf(TEXT("and %d more problem(s)"), Hidden));
				}
				OutReason = FString::Join(Shown, TEXT("; "));
			}
			return bRead;
		}

	private:
		bool ReadFile()
		{
			// The first line alone must be a package header, as the asset registry reads it.
			FPackageFileHeader HeaderOnly;
			FString HeaderError;
			if (!ReadPackageFileHeader(Filename, HeaderOnly, HeaderError))
			{
				// The header reader names the file itself; keep only its reason.
				const int32 Colon = HeaderError.Find(TEXT("': "));
				Errors.Add(Colon != INDEX_NONE ? HeaderError.Mid(Colon + 3).LeftChop(HeaderError.EndsWith(TEXT(".")) ? 1 : 0) : HeaderError);
				return false;
			}
			Header = MoveTemp(HeaderOnly);

			TArray<uint8> Bytes;
			if (!FFileHelper::LoadFileToArray(Bytes, *Filename))
			{
				Errors.Add(TEXT("the file cannot be read"));
				return false;
			}
			int32 Start = 0;
			if (Bytes.Num() >= 3 && Bytes[0] == 0xEF && Bytes[1] == 0xBB && Bytes[2] == 0xBF)
			{
				Start = 3;
			}
			const TSharedRef<TJsonReader<UTF8CHAR>> Reader =
				TJsonReaderFactory<UTF8CHAR>::CreateFromView(reinterpret_cast<const UTF8CHAR*>(Bytes.GetData() + Start), Bytes.Num() - Start);
			if (!FJsonSerializer::Deserialize(Reader, Root) || !Root.IsValid())
			{
				Errors.Add(FString::Printf(TEXT("the file is not a valid JSON document (%s)"), *Reader->GetErrorMessage()));
				return false;
			}
			const TArray<TSharedPtr<FJsonValue>>* ObjectValues = nullptr;
			if (!Root->TryGetArrayField(TEXT("objects"), ObjectValues))
			{
				Errors.Add(TEXT("it has no \"objects\" array"));
				return false;
			}
			for (int32 Index = 0; Index < ObjectValues->Num(); ++Index)
			{
				const TSharedPtr<FJsonValue>& Value = (*ObjectValues)[Index];
				const TSharedPtr<FJsonObject>* Entry = nullptr;
				if (!Value.IsValid() || Value->Type != EJson::Object || !Value->TryGetObject(Entry) || !Entry->IsValid())
				{
					Errors.Add(FString::Printf(TEXT("entry %d of \"objects\" is not a JSON object"), Index));
					return false;
				}
				Entries.Add(Entry->Get());
			}
			return true;
		}

		static bool GetStringField(const FJsonObject& Entry, const TCHAR* Field, FString& OutValue)
		{
			const TSharedPtr<FJsonValue> Value = Entry.TryGetField(Field);
			return Value.IsValid() && Value->Type == EJson::String && Value->TryGetString(OutValue);
		}

		UClass* ResolveClass(const FString& ClassPath, FString& OutProblem)
		{
			const FString ClassPackage = FPackageName::ObjectPathToPackageName(ClassPath);
			if (ClassPackage.Equals(Package->GetName(), ESearchCase::IgnoreCase))
			{
				UObject* const* Found = ObjectsByPath.Find(FPackageName::ObjectPathToPathWithinPackage(ClassPath));
				UClass* Class = Found ? Cast<UClass>(*Found) : nullptr;
				if (!Class)
				{
					OutProblem = FString::Printf(TEXT("its class '%s' is not an earlier object of the package"), *ClassPath);
				}
				return Class;
			}
			UClass* Class = Cast<UClass>(StaticFindObject(UClass::StaticClass(), nullptr, *ClassPath));
			if (!Class && FPackageName::IsValidLongPackageName(ClassPackage, false) && LoadPackage(nullptr, *ClassPackage, LoadFlags))
			{
				Class = Cast<UClass>(StaticFindObject(UClass::StaticClass(), nullptr, *ClassPath));
			}
			if (!Class)
			{
				OutProblem = FString::Printf(TEXT("its class '%s' does not exist"), *ClassPath);
			}
			return Class;
		}

		bool CreateObjects()
		{
			for (int32 Index = 0; Index < Entries.Num(); ++Index)
			{
				const FJsonObject& Entry = *Entries[Index];
				FString Name;
				FString ClassPath;
				FString OuterPath;
				FString FlagsText;
				if (!GetStringField(Entry, TEXT("name"), Name) || !GetStringField(Entry, TEXT("class"), ClassPath) || !GetStringField(Entry, TEXT("outer"), OuterPath)
					|| !GetStringField(Entry, TEXT("flags"), FlagsText))
				{
					Errors.Add(FString::Printf(TEXT("object entry %d lacks one of the strings \"name\", \"class\", \"outer\" and \"flags\""), Index));
					continue;
				}
				// The editor renames objects freely ("New State Machine" is a graph's name), so only what would break the
				// paths that tie entries to their outers is refused here: separators and line breaks.
				int32 SeparatorIndex = INDEX_NONE;
				if (Name.IsEmpty() || Name.FindChar(TEXT('.'), SeparatorIndex) || Name.FindChar(TEXT(':'), SeparatorIndex) || Name.FindChar(TEXT('/'), SeparatorIndex)
					|| Name.FindChar(TEXT('\n'), SeparatorIndex) || Name.FindChar(TEXT('\r'), SeparatorIndex))
				{
					Errors.Add(FString::Printf(TEXT("object entry %d has the invalid name \"%s\""), Index, *Name));
					continue;
				}
				UObject* Outer = Package;
				if (!OuterPath.IsEmpty())
				{
					UObject* const* Found = ObjectsByPath.Find(OuterPath);
					if (!Found)
					{
						Errors.Add(FString::Printf(TEXT("object '%s': its outer '%s' is not an earlier object of the package"), *Name, *OuterPath));
						continue;
					}
					Outer = *Found;
				}
				const FString Path = OuterPath.IsEmpty() ? Name : OuterPath + (Outer->GetOuter() == Package ? TEXT(":") : TEXT(".")) + Name;
				if (ObjectsByPath.Contains(Path))
				{
					Errors.Add(FString::Printf(TEXT("object '%s' appears twice"), *Path));
					continue;
				}
				EObjectFlags Flags = RF_NoFlags;
				FString BadFlag;
				if (!PersistedObjectFlagsFromString(FlagsText, Flags, BadFlag))
				{
					Errors.Add(FString::Printf(TEXT("object '%s': '%s' is not a flag a package keeps"), *Path, *BadFlag));
					continue;
				}
				FString Problem;
				UClass* Class = ResolveClass(ClassPath, Problem);
				if (!Class)
				{
					Errors.Add(FString::Printf(TEXT("object '%s': %s"), *Path, *Problem));
					continue;
				}
				UObject* Object = MakeObject(Outer, Class, FName(Name), Flags, Problem);
				if (!Object)
				{
					Errors.Add(FString::Printf(TEXT("object '%s': %s"), *Path, *Problem));
					continue;
				}
				Object->SetFlags(Flags | RF_WasLoaded);
				ObjectsByPath.Add(Path, Object);
				Loaded.Add(FLoadedObject{Object, &Entry, &FPackageSerializerRegistry::Get().FindSerializer(Class)});
			}
			return Errors.Num() == 0;
		}

		UObject* MakeObject(UObject* Outer, UClass* Class, FName Name, EObjectFlags Flags, FString& OutProblem)
		{
			if (Flags & RF_ClassDefaultObject)
			{
				UObject* Default = Class->GetDefaultObject();
				if (!Default || Default->GetOuter() != Outer || Default->GetFName() != Name)
				{
					OutProblem = FString::Printf(TEXT("it is not the class default object of '%s'"), *Class->GetPathName());
					return nullptr;
				}
				return Default;
			}
			// Objects the outer's constructor made (default subobjects) are read into, not made again.
			if (UObject* Existing = StaticFindObjectFast(nullptr, Outer, Name))
			{
				if (Existing->GetClass() != Class)
				{
					OutProblem = FString::Printf(TEXT("the name is already taken by an object of class '%s'"), *Existing->GetClass()->GetPathName());
					return nullptr;
				}
				return Existing;
			}
			if (Class->HasAnyClassFlags(CLASS_Abstract))
			{
				OutProblem = FString::Printf(TEXT("its class '%s' is abstract"), *Class->GetPathName());
				return nullptr;
			}
			UObject* Object = NewObject<UObject>(Outer, Class, Name, Flags & RF_Load);
			if (!Object)
			{
				OutProblem = FString::Printf(TEXT("an object of class '%s' cannot be made there"), *Class->GetPathName());
				return nullptr;
			}
			Created.Add(Object);
			return Object;
		}

		bool LoadDependencies()
		{
			for (const FName& Dependency : Header.Dependencies)
			{
				const FString DependencyName = Dependency.ToString();
				if (FindObject<UPackage>(nullptr, *DependencyName) && PackagesBeingLoaded().ContainsByPredicate([&Dependency](const UPackage* Loading) { return Loading->GetFName() == Dependency; }))
				{
					continue;
				}
				if (!LoadPackage(nullptr, *DependencyName, LoadFlags))
				{
					Errors.Add(FString::Printf(TEXT("the package it references, '%s', cannot be loaded (%s)"), *DependencyName, *GetLastPackageError()));
				}
			}
			return Errors.Num() == 0;
		}

		bool ReadObjects()
		{
			for (const FLoadedObject& Item : Loaded)
			{
				const int32 Before = Context.GetErrors().Num();
				Item.Serializer->LoadObject(*Item.Object, *Item.Entry, Context);
				AddObjectErrors(*Item.Object, Before);
			}
			return Errors.Num() == 0;
		}

		bool PostLoadObjects()
		{
			for (const FLoadedObject& Item : Loaded)
			{
				const int32 Before = Context.GetErrors().Num();
				Item.Serializer->PostLoadObject(*Item.Object, Context);
				Item.Object->SetFlags(RF_LoadCompleted);
				AddObjectErrors(*Item.Object, Before);
			}
			return Errors.Num() == 0;
		}

		void AddObjectErrors(const UObject& Object, int32 First)
		{
			for (int32 Index = First; Index < Context.GetErrors().Num(); ++Index)
			{
				Errors.Add(FString::Printf(TEXT("object '%s': %s"), *GetPathInPackage(&Object), *Context.GetErrors()[Index]));
			}
		}

		UPackage* Package;
		FString Filename;
		uint32 LoadFlags;
		FPackageLoadContext Context;
		FPackageFileHeader Header;
		TSharedPtr<FJsonObject> Root;
		TArray<const FJsonObject*> Entries;
		TMap<FString, UObject*> ObjectsByPath;
		TArray<FLoadedObject> Loaded;
		TArray<UObject*> Created;
		TArray<FString> Errors;
	};

	UPackage* LoadPackageFromFile(UPackage* InOuter, const FString& Input, uint32 LoadFlags, FString& OutError)
	{
		FString PackageName;
		FString Filename;
		if (Input.IsEmpty() && InOuter)
		{
			PackageName = InOuter->GetName();
		}
		else if (Input.IsEmpty())
		{
			OutError = TEXT("Cannot load a package: no package name was given.");
			return nullptr;
		}
		else if (FPackageName::IsValidPath(Input) && !FPackageName::IsPackageFilename(Input))
		{
			PackageName = Input;
		}
		else
		{
			FString Reason;
			if (!FPackageName::TryConvertFilenameToLongPackageName(Input, PackageName, &Reason))
			{
				OutError = FString::Printf(TEXT("Cannot load '%s': %s"), *Input, *Reason);
				return nullptr;
			}
		}

		FText Reason;
		if (!FPackageName::IsValidLongPackageName(PackageName, true, &Reason))
		{
			OutError = FString::Printf(TEXT("Cannot load package '%s': %s"), *PackageName, *Reason.ToString());
			return nullptr;
		}

		UPackage* Existing = InOuter ? InOuter : FindObject<UPackage>(nullptr, *PackageName);
		if (Existing && (Existing->IsFullyLoaded() || PackagesBeingLoaded().Contains(Existing)))
		{
			return Existing;
		}

		// Where the file must be: the package's .uasset, else its .umap.
		FString AssetFile;
		if (!FPackageName::TryConvertLongPackageNameToFilename(PackageName, AssetFile, FPackageName::GetAssetPackageExtension(), Reason))
		{
			OutError = FString::Printf(TEXT("Cannot load package '%s': %s"), *PackageName, *Reason.ToString());
			return nullptr;
		}
		Filename = AssetFile;
		if (!IFileManager::Get().FileExists(*Filename))
		{
			FString MapFile;
			if (FPackageName::TryConvertLongPackageNameToFilename(PackageName, MapFile, FPackageName::GetMapPackageExtension()) && IFileManager::Get().FileExists(*MapFile))
			{
				Filename = MapFile;
			}
			else
			{
				OutError = FString::Printf(TEXT("Cannot load package '%s': its file '%s' does not exist."), *PackageName, *AssetFile);
				return nullptr;
			}
		}

		UPackage* Package = Existing ? Existing : CreatePackage(*PackageName);
		if (!Package)
		{
			OutError = FString::Printf(TEXT("Cannot load package '%s': the package cannot be made."), *PackageName);
			return nullptr;
		}
		PackagesBeingLoaded().Add(Package);
		FPackageReader Reader(Package, Filename, LoadFlags);
		FString ReadError;
		const bool bRead = Reader.Read(ReadError);
		PackagesBeingLoaded().Remove(Package);

		// Either way the package now belongs to this file: a failed one keeps the reason, which
		// stops a later save from replacing the file with what little was read.
		Package->SetLoadedPath(Filename);
		if (!bRead)
		{
			OutError = FString::Printf(TEXT("Cannot load package '%s' from '%s': %s."), *PackageName, *Filename, *ReadError);
			Package->SetLoadError(OutError);
			return nullptr;
		}
		Package->SetLoadError(FString());
		Package->MarkAsFullyLoaded();
		Package->ClearPackageFlags(PKG_NewlyCreated);
		Package->SetDirtyFlag(false);
		OutError.Reset();
		return Package;
	}
}

UPackage* LoadPackage(UPackage* InOuter, const TCHAR* InLongPackageNameOrFilename, uint32 LoadFlags, FArchive* InReaderOverride, const FLinkerInstancingContext* InstancingContext)
{
	FString Error;
	UPackage* Package = LoadPackageFromFile(InOuter, InLongPackageNameOrFilename ? FString(InLongPackageNameOrFilename) : FString(), LoadFlags, Error);
	UE::Headless::SetLastPackageError(Error);
	return Package;
}
