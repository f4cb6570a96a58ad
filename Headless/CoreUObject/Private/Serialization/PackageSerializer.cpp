#include "Serialization/PackageSerializer.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Misc/PackageName.h"
#include "UObject/Class.h"
#include "UObject/UnrealType.h"
#include "UObject/FieldIterator.h"
#include "UObject/Package.h"
#include "UObject/PropertyPortFlags.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/UObjectGlobals.h"

namespace
{
	// Properties a package never keeps: transient state, values kept only for loading old data, and
	// values their type says not to write.
	constexpr EPropertyFlags UnsavedPropertyFlags = CPF_Transient | CPF_Deprecated | CPF_SkipSerialization;

	struct FFlagName
	{
		EObjectFlags Flag;
		const TCHAR* Name;
	};

	// In bit order; exactly the flags of RF_Load.
	const FFlagName PersistedFlagNames[] = {
		{RF_Public, TEXT("RF_Public")},
		{RF_Standalone, TEXT("RF_Standalone")},
		{RF_Transactional, TEXT("RF_Transactional")},
		{RF_ClassDefaultObject, TEXT("RF_ClassDefaultObject")},
		{RF_ArchetypeObject, TEXT("RF_ArchetypeObject")},
		{RF_DefaultSubObject, TEXT("RF_DefaultSubObject")},
		{RF_TextExportTransient, TEXT("RF_TextExportTransient")},
		{RF_InheritableComponentTemplate, TEXT("RF_InheritableComponentTemplate")},
		{RF_DuplicateTransient, TEXT("RF_DuplicateTransient")},
		{RF_NonPIEDuplicateTransient, TEXT("RF_NonPIEDuplicateTransient")},
		{RF_MigratingAsset, TEXT("RF_MigratingAsset")},
	};

	/** "Name" or "Name(3)" for element 3 of a C array. */
	FString PropertyKey(const FProperty& Property, int32 Index)
	{
		return Property.GetArrayDim() == 1 ? Property.GetName() : FString::Printf(TEXT("%s(%d)"), *Property.GetName(), Index);
	}

	/** Splits "Name(3)" into "Name" and 3; "Name" gives index 0. False for a malformed index. */
	bool ParsePropertyKey(const FString& Key, FString& OutName, int32& OutIndex, bool& bOutHasIndex)
	{
		OutIndex = 0;
		bOutHasIndex = false;
		int32 Open = INDEX_NONE;
		if (!Key.FindChar(TEXT('('), Open))
		{
			OutName = Key;
			return !Key.IsEmpty();
		}
		if (Open == 0 || !Key.EndsWith(TEXT(")")) || Key.Len() < Open + 3)
		{
			return false;
		}
		const FString Digits = Key.Mid(Open + 1, Key.Len() - Open - 2);
		int64 Index = 0;
		for (const TCHAR Char : Digits)
		{
			if (Char < TEXT('0') || Char > TEXT('9') || Index > 1000000)
			{
				return false;
			}
			Index = Index * 10 + (Char - TEXT('0'));
		}
		OutName = Key.Left(Open);
		OutIndex = int32(Index);
		bOutHasIndex = true;
		return true;
	}

	bool IsOnlyWhitespace(const TCHAR* Text)
	{
		for (; Text && *Text; ++Text)
		{
			if (*Text != TEXT(' ') && *Text != TEXT('\t') && *Text != TEXT('\r') && *Text != TEXT('\n'))
			{
				return false;
			}
		}
		return true;
	}
}

namespace UE::Headless
{
	// ---- Save context ----------------------------------------------------------------------

	void FPackageSaveContext::AddDependency(FName PackageName)
	{
		if (PackageName.IsNone() || (Package && PackageName == Package->GetFName()))
		{
			return;
		}
		const FString Name = PackageName.ToString();
		if (FPackageName::IsScriptPackage(Name) || FPackageName::IsMemoryPackage(Name) || FPackageName::IsTempPackage(Name))
		{
			return;
		}
		Dependencies.AddUnique(PackageName);
	}

	void FPackageSaveContext::AddReferencedObject(const UObject* Object)
	{
		if (!Object)
		{
			return;
		}
		UPackage* ObjectPackage = Object->GetPackage();
		const bool bInThisPackage = ObjectPackage == Package;
		if (ObjectPackage == GetTransientPackage() || (!bInThisPackage && ObjectPackage && ObjectPackage->HasAnyFlags(RF_Transient)))
		{
			AddError(FString::Printf(TEXT("it references '%s', which lives in a transient package and is never saved"), *Object->GetPathName()));
			return;
		}
		for (const UObject* Outer = Object; bInThisPackage && Outer && Outer != Package; Outer = Outer->GetOuter())
		{
			if (Outer->HasAnyFlags(RF_Transient))
			{
				AddError(FString::Printf(TEXT("it references '%s', which is transient and is never saved"), *Object->GetPathName()));
				return;
			}
		}
		if (ObjectPackage)
		{
			AddDependency(ObjectPackage->GetFName());
		}
	}

	void FPackageSaveContext::AddReferencesInValue(const FProperty* Property, const void* Value)
	{
		if (!Property || !Value)
		{
			return;
		}
		if (CastField<FSoftObjectProperty>(Property))
		{
			const FSoftObjectPath& Path = static_cast<const FSoftObjectPtr*>(Value)->ToSoftObjectPath();
			AddDependency(Path.GetLongPackageFName());
		}
		else if (const FObjectPropertyBase* ObjectProperty = CastField<FObjectPropertyBase>(Property))
		{
			AddReferencedObject(ObjectProperty->GetObjectPropertyValue(Value));
		}
		else if (CastField<FInterfaceProperty>(Property))
		{
			AddReferencedObject(static_cast<const FScriptInterface*>(Value)->GetObject());
		}
		else if (const FStructProperty* StructProperty = CastField<FStructProperty>(Property))
		{
			if (StructProperty->Struct == FSoftObjectPath::StaticStruct() || StructProperty->Struct == FSoftClassPath::StaticStruct())
			{
				AddDependency(static_cast<const FSoftObjectPath*>(Value)->GetLongPackageFName());
			}
			else if (StructProperty->Struct)
			{
				for (TFieldIterator<FProperty> It(StructProperty->Struct); It; ++It)
				{
					for (int32 Index = 0; Index < It->GetArrayDim(); ++Index)
					{
						AddReferencesInValue(*It, It->ContainerPtrToValuePtr<void>(Value, Index));
					}
				}
			}
		}
		else if (const FArrayProperty* ArrayProperty = CastField<FArrayProperty>(Property))
		{
			FScriptArrayHelper Helper(ArrayProperty, Value);
			for (int32 Index = 0; Index < Helper.Num(); ++Index)
			{
				AddReferencesInValue(ArrayProperty->Inner, Helper.GetRawPtr(Index));
			}
		}
		else if (const FSetProperty* SetProperty = CastField<FSetProperty>(Property))
		{
			FScriptSetHelper Helper(SetProperty, Value);
			for (int32 Index = 0; Index < Helper.Num(); ++Index)
			{
				AddReferencesInValue(SetProperty->ElementProp, Helper.GetElementPtr(Index));
			}
		}
		else if (const FMapProperty* MapProperty = CastField<FMapProperty>(Property))
		{
			FScriptMapHelper Helper(MapProperty, Value);
			for (int32 Index = 0; Index < Helper.Num(); ++Index)
			{
				AddReferencesInValue(MapProperty->KeyProp, Helper.GetKeyPtr(Index));
				AddReferencesInValue(MapProperty->ValueProp, Helper.GetValuePtr(Index));
			}
		}
	}

	// ---- Serializers -----------------------------------------------------------------------

	void IPackageSerializer::PostLoadObject(UObject& Object, FPackageLoadContext& Context) const
	{
		Object.PostLoad();
	}

	void FPropertyPackageSerializer::SaveObject(const UObject& Object, FJsonObject& OutEntry, FPackageSaveContext& Context) const
	{
		const TSharedRef<FJsonObject> Properties = MakeShared<FJsonObject>();
		SaveProperties(Object, *Properties, Context);
		OutEntry.SetObjectField(TEXT("properties"), Properties);
	}

	void FPropertyPackageSerializer::LoadObject(UObject& Object, const FJsonObject& Entry, FPackageLoadContext& Context) const
	{
		const TSharedPtr<FJsonValue> Value = Entry.TryGetField(TEXT("properties"));
		if (!Value.IsValid())
		{
			return;
		}
		const TSharedPtr<FJsonObject>* Properties = nullptr;
		if (Value->Type != EJson::Object || !Value->TryGetObject(Properties) || !Properties->IsValid())
		{
			Context.AddError(TEXT("its \"properties\" is not a JSON object"));
			return;
		}
		LoadProperties(Object, **Properties, Context);
	}

	void FPropertyPackageSerializer::SaveProperties(const UObject& Object, FJsonObject& OutProperties, FPackageSaveContext& Context)
	{
		const UObject* Archetype = Object.GetArchetype();
		for (TFieldIterator<FProperty> It(Object.GetClass()); It; ++It)
		{
			const FProperty* Property = *It;
			if (Property->HasAnyPropertyFlags(UnsavedPropertyFlags))
			{
				continue;
			}
			// A class default object's archetype is the super class's, which lacks this class's own properties.
			const UObject* Defaults = Archetype && Property->IsInContainer(Archetype->GetClass()) ? Archetype : nullptr;
			for (int32 Index = 0; Index < Property->GetArrayDim(); ++Index)
			{
				if (Property->Identical_InContainer(&Object, Defaults, Index, PPF_None))
				{
					continue;
				}
				const void* ValuePtr = Property->ContainerPtrToValuePtr<void>(&Object, Index);
				FString Text;
				Property->ExportTextItem_Direct(Text, ValuePtr, nullptr, nullptr, PPF_None);
				OutProperties.SetStringField(PropertyKey(*Property, Index), Text);
				Context.AddReferencesInValue(Property, ValuePtr);
			}
		}
	}

	void FPropertyPackageSerializer::LoadProperties(UObject& Object, const FJsonObject& Properties, FPackageLoadContext& Context)
	{
		for (const auto& Pair : Properties.Values)
		{
			FString Name;
			int32 Index = 0;
			bool bHasIndex = false;
			if (!ParsePropertyKey(Pair.Key, Name, Index, bHasIndex))
			{
				Context.AddError(FString::Printf(TEXT("'%s' is not a property name"), *Pair.Key));
				continue;
			}
			const FProperty* Property = Object.GetClass()->FindPropertyByName(FName(Name));
			if (!Property || Property->HasAnyPropertyFlags(UnsavedPropertyFlags))
			{
				Context.AddError(FString::Printf(TEXT("its class '%s' has no saved property '%s'"), *Object.GetClass()->GetPathName(), *Name));
				continue;
			}
			if (bHasIndex != (Property->GetArrayDim() > 1) || Index >= Property->GetArrayDim())
			{
				Context.AddError(FString::Printf(TEXT("'%s' does not name an element of property '%s' (%d element(s))"), *Pair.Key, *Name, Property->GetArrayDim()));
				continue;
			}
			FString Text;
			if (!Pair.Value.IsValid() || Pair.Value->Type != EJson::String || !Pair.Value->TryGetString(Text))
			{
				Context.AddError(FString::Printf(TEXT("the value of property '%s' is not a string of export text"), *Pair.Key));
				continue;
			}
			const TCHAR* End = Property->ImportText_Direct(*Text, Property->ContainerPtrToValuePtr<void>(&Object, Index), &Object, PPF_None);
			if (!End || !IsOnlyWhitespace(End))
			{
				Context.AddError(FString::Printf(TEXT("property '%s' cannot be read from \"%s\""), *Pair.Key, *Text));
			}
		}
	}

	// ---- Registry ----------------------------------------------------------------------------

	FPackageSerializerRegistry& FPackageSerializerRegistry::Get()
	{
		static FPackageSerializerRegistry* Registry = new FPackageSerializerRegistry();
		return *Registry;
	}

	void FPackageSerializerRegistry::Register(const FTopLevelAssetPath& ClassPath, TSharedRef<IPackageSerializer> Serializer)
	{
		Unregister(ClassPath);
		Serializers.Emplace(ClassPath, Serializer);
	}

	void FPackageSerializerRegistry::Unregister(const FTopLevelAssetPath& ClassPath)
	{
		Serializers.RemoveAll([&ClassPath](const TPair<FTopLevelAssetPath, TSharedRef<IPackageSerializer>>& Entry) { return Entry.Key == ClassPath; });
	}

	const IPackageSerializer& FPackageSerializerRegistry::FindSerializer(const UClass* Class) const
	{
		for (const UClass* Current = Class; Current; Current = Current->GetSuperClass())
		{
			const FTopLevelAssetPath Path(Current);
			for (const TPair<FTopLevelAssetPath, TSharedRef<IPackageSerializer>>& Entry : Serializers)
			{
				if (Entry.Key == Path)
				{
					return *Entry.Value;
				}
			}
		}
		return DefaultSerializer;
	}

	// ---- Helpers -----------------------------------------------------------------------------

	FString GetPathInPackage(const UObject* Object)
	{
		if (!Object || !Object->GetOuter())
		{
			return FString();
		}
		const UObject* Outer = Object->GetOuter();
		if (!Outer->GetOuter())
		{
			return Object->GetName();
		}
		// As in object paths: ':' after a top-level object, '.' deeper down.
		const TCHAR* Delimiter = Outer->GetOuter()->GetOuter() ? TEXT(".") : TEXT(":");
		return GetPathInPackage(Outer) + Delimiter + Object->GetName();
	}

	FString PersistedObjectFlagsToString(EObjectFlags Flags)
	{
		FString Result;
		for (const FFlagName& Entry : PersistedFlagNames)
		{
			if (Flags & Entry.Flag)
			{
				Result += Result.IsEmpty() ? FString(Entry.Name) : FString(TEXT("|")) + Entry.Name;
			}
		}
		return Result;
	}

	bool PersistedObjectFlagsFromString(const FString& Text, EObjectFlags& OutFlags, FString& OutBadName)
	{
		EObjectFlags Flags = RF_NoFlags;
		TArray<FString> Names;
		Text.ParseIntoArray(Names, TEXT("|"), true);
		for (const FString& RawName : Names)
		{
			const FString Name = RawName.TrimStartAndEnd();
			const FFlagName* Found = nullptr;
			for (const FFlagName& Entry : PersistedFlagNames)
			{
				if (Name.Equals(Entry.Name, ESearchCase::CaseSensitive))
				{
					Found = &Entry;
					break;
				}
			}
			if (!Found)
			{
				OutBadName = Name;
				return false;
			}
			Flags |= Found->Flag;
		}
		OutFlags = Flags;
		return true;
	}
}
