#include "AssetOperationBase.h"

#include "AssetRegistry/IAssetRegistry.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "Templates/Casts.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

namespace
{
	/** Removes one pair of matching quotes around the text. */
	void StripQuotes(FString& Text)
	{
		while (Text.Len() >= 2 && (Text[0] == TEXT('"') || Text[0] == TEXT('\'')) && Text[Text.Len() - 1] == Text[0])
		{
			Text = Text.Mid(1, Text.Len() - 2).TrimStartAndEnd();
		}
	}

	/** "Blueprint'/Game/A/B.B'" gives "/Game/A/B.B"; other text is left alone. */
	void StripClassReference(FString& Text)
	{
		const int32 Open = Text.Find(TEXT("'"), ESearchCase::CaseSensitive);
		if (Open <= 0 || Text.Len() < Open + 2 || Text[Text.Len() - 1] != TEXT('\''))
		{
			return;
		}
		for (int32 Index = 0; Index < Open; ++Index)
		{
			const TCHAR Char = Text[Index];
			if (!FChar::IsAlnum(Char) && Char != TEXT('_') && Char != TEXT('/') && Char != TEXT('.'))
			{
				return;
			}
		}
		Text = Text.Mid(Open + 1, Text.Len() - Open - 2).TrimStartAndEnd();
	}

	/** Lowers a generated-class or default-object name to the asset's own name when it is one of those. */
	FString AssetNameForObjectPart(const FString& ObjectPart, const FString& AssetName)
	{
		if (ObjectPart.IsEmpty() || ObjectPart == AssetName)
		{
			return AssetName;
		}
		const FString GeneratedClass = AssetName + TEXT("_C");
		if (ObjectPart == GeneratedClass || ObjectPart == FString(TEXT("SKEL_")) + GeneratedClass
			|| ObjectPart == FString(TEXT("Default__")) + GeneratedClass || ObjectPart == FString(TEXT("Default__SKEL_")) + GeneratedClass)
		{
			return AssetName;
		}
		return ObjectPart;
	}

	/** The object of the path that stands for a class: itself when it is one, else its generated class. */
	UClass* ClassOfObject(UObject* Object)
	{
		if (!Object)
		{
			return nullptr;
		}
		if (UClass* AsClass = Cast<UClass>(Object))
		{
			return AsClass;
		}
		// Blueprints name their class in "GeneratedClass"; found by reflection so that this module
		// needs nothing of the Blueprint editor.
		if (FObjectPropertyBase* Property = CastField<FObjectPropertyBase>(Object->GetClass()->FindPropertyByName(TEXT("GeneratedClass"))))
		{
			return Cast<UClass>(Property->GetObjectPropertyValue_InContainer(Object));
		}
		return nullptr;
	}

	UObject* FindOrLoadAsset(const FString& ObjectPath)
	{
		if (UObject* Found = StaticFindObject(UObject::StaticClass(), nullptr, *ObjectPath))
		{
			return Found;
		}
		return StaticLoadObject(UObject::StaticClass(), nullptr, *ObjectPath);
	}
}

FString FAssetOperationBase::NormalizeAssetPath(const FString& AssetPath)
{
	FString Path = AssetPath.TrimStartAndEnd();
	StripQuotes(Path);
	StripClassReference(Path);
	Path.ReplaceInline(TEXT("\\"), TEXT("/"), ESearchCase::CaseSensitive);
	FPaths::RemoveDuplicateSlashes(Path);
	while (Path.Len() > 1 && Path.EndsWith(TEXT("/"), ESearchCase::CaseSensitive))
	{
		Path.LeftChopInline(1);
	}
	if (!Path.StartsWith(TEXT("/"), ESearchCase::CaseSensitive) || Path.Len() < 2)
	{
		return Path;
	}

	for (const FString* Extension : {&FPackageName::GetAssetPackageExtension(), &FPackageName::GetMapPackageExtension()})
	{
		if (Path.EndsWith(*Extension, ESearchCase::IgnoreCase))
		{
			Path.LeftChopInline(Extension->Len());
			break;
		}
	}

	FString PackageName = Path;
	FString ObjectPart;
	int32 Dot = INDEX_NONE;
	if (Path.FindChar(TEXT('.'), Dot))
	{
		PackageName = Path.Left(Dot);
		ObjectPart = Path.Mid(Dot + 1);
		int32 Colon = INDEX_NONE;
		if (ObjectPart.FindChar(TEXT(':'), Colon))
		{
			ObjectPart.LeftInline(Colon);
		}
		ObjectPart.TrimStartAndEndInline();
	}
	while (PackageName.Len() > 1 && PackageName.EndsWith(TEXT("/"), ESearchCase::CaseSensitive))
	{
		PackageName.LeftChopInline(1);
	}
	const FString AssetName = FPackageName::GetShortName(PackageName);
	if (AssetName.IsEmpty())
	{
		return Path;
	}
	return PackageName + TEXT(".") + AssetNameForObjectPart(ObjectPart, AssetName);
}

FString FAssetOperationBase::GetPackageNameFromPath(const FString& AssetPath)
{
	const FString Normalized = NormalizeAssetPath(AssetPath);
	int32 Dot = INDEX_NONE;
	return Normalized.FindChar(TEXT('.'), Dot) ? Normalized.Left(Dot) : Normalized;
}

FString FAssetOperationBase::GetAssetNameFromPath(const FString& AssetPath)
{
	return FPackageName::GetShortName(GetPackageNameFromPath(AssetPath));
}

bool FAssetOperationBase::AssetExists(const FString& AssetPath)
{
	const FString ObjectPath = NormalizeAssetPath(AssetPath);
	const FString PackageName = GetPackageNameFromPath(ObjectPath);
	if (!FPackageName::IsValidLongPackageName(PackageName))
	{
		return false;
	}
	if (IAssetRegistry* Registry = IAssetRegistry::Get())
	{
		if (Registry->GetAssetByObjectPath(FSoftObjectPath(ObjectPath)).IsValid())
		{
			return true;
		}
	}
	// Created in memory and not announced to the registry: it exists for the editor all the same.
	UObject* InMemory = StaticFindObject(UObject::StaticClass(), nullptr, *ObjectPath);
	return InMemory && !InMemory->IsA<UPackage>();
}

UClass* FAssetOperationBase::GetAssetClassFromAssetName(const FString& AssetName)
{
	FString Name = AssetName.TrimStartAndEnd();
	StripQuotes(Name);
	StripClassReference(Name);
	if (Name.IsEmpty())
	{
		return nullptr;
	}

	if (Name.StartsWith(TEXT("/"), ESearchCase::CaseSensitive))
	{
		// A class path first ("/Script/Engine.Actor", "/Game/BP_Door.BP_Door_C"), then the asset it names.
		if (UClass* Class = FindObject<UClass>(nullptr, *Name))
		{
			return Class;
		}
		const FString ObjectPath = NormalizeAssetPath(Name);
		if (!FPackageName::IsValidObjectPath(ObjectPath))
		{
			return nullptr;
		}
		if (UClass* Class = FindObject<UClass>(nullptr, *ObjectPath))
		{
			return Class;
		}
		return ClassOfObject(FindOrLoadAsset(ObjectPath));
	}

	// A short class name, as written in C++ or without its prefix. Of several classes of one name,
	// the engine's own (a script package's) is meant, as the editor's class pickers assume.
	constexpr EFindFirstObjectOptions Options = EFindFirstObjectOptions::NativeFirst;
	if (UClass* Class = FindFirstObject<UClass>(*Name, Options))
	{
		return Class;
	}
	if (Name.Len() > 1 && (Name[0] == TEXT('U') || Name[0] == TEXT('A')) && FChar::IsUpper(Name[1]))
	{
		if (UClass* Class = FindFirstObject<UClass>(*Name.RightChop(1), Options))
		{
			return Class;
		}
	}

	// Finally an asset of that name (a Blueprint named by its asset name), when exactly one has it.
	IAssetRegistry* Registry = IAssetRegistry::Get();
	if (!Registry)
	{
		return nullptr;
	}
	TArray<FAssetData> Assets;
	Registry->GetAllAssets(Assets);
	const FAssetData* Match = nullptr;
	for (const FAssetData& Asset : Assets)
	{
		if (Asset.AssetName.ToString() == Name)
		{
			if (Match)
			{
				return nullptr;
			}
			Match = &Asset;
		}
	}
	return Match ? ClassOfObject(FindOrLoadAsset(Match->GetObjectPathString())) : nullptr;
}
