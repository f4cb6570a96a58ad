#include "AssetOperationBase.h"

#include "Dom/JsonObject.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Templates/Casts.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

namespace
{
	/** The category a request's word names, or None. Words compare without case. */
	FName FindPinCategory(const FString& Word)
	{
		using K2 = UEdGraphSchema_K2;
		const FName Categories[] = {
			K2::PC_Exec, K2::PC_Boolean, K2::PC_Byte, K2::PC_Class, K2::PC_SoftClass, K2::PC_Int, K2::PC_Int64,
			K2::PC_Float, K2::PC_Double, K2::PC_Real, K2::PC_Name, K2::PC_Delegate, K2::PC_MCDelegate, K2::PC_Object,
			K2::PC_Interface, K2::PC_SoftObject, K2::PC_String, K2::PC_Text, K2::PC_Struct, K2::PC_Wildcard,
			K2::PC_Enum, K2::PC_FieldPath,
		};
		for (const FName& Category : Categories)
		{
			if (Word.Equals(Category.ToString(), ESearchCase::IgnoreCase))
			{
				return Category;
			}
		}
		// The words people write for the same types.
		if (Word.Equals(TEXT("boolean"), ESearchCase::IgnoreCase))
		{
			return K2::PC_Boolean;
		}
		if (Word.Equals(TEXT("integer"), ESearchCase::IgnoreCase) || Word.Equals(TEXT("int32"), ESearchCase::IgnoreCase))
		{
			return K2::PC_Int;
		}
		return NAME_None;
	}

	bool IsClassCategory(const FName Category)
	{
		using K2 = UEdGraphSchema_K2;
		return Category == K2::PC_Object || Category == K2::PC_Class || Category == K2::PC_Interface
			|| Category == K2::PC_SoftObject || Category == K2::PC_SoftClass;
	}

	/** The kind of object a category's sub-category object must be, or null when the category takes none. */
	UClass* GetTypeObjectKind(const FName Category)
	{
		using K2 = UEdGraphSchema_K2;
		if (IsClassCategory(Category))
		{
			return UClass::StaticClass();
		}
		if (Category == K2::PC_Struct)
		{
			return UScriptStruct::StaticClass();
		}
		if (Category == K2::PC_Byte || Category == K2::PC_Enum)
		{
			return UEnum::StaticClass();
		}
		return nullptr;
	}

	/** A Blueprint asset stands for the class it generates. */
	UObject* BlueprintToClass(UObject* Object)
	{
		if (const UBlueprint* Blueprint = Cast<UBlueprint>(Object))
		{
			return Blueprint->GeneratedClass.Get();
		}
		return Object;
	}

	/** The class, struct or enum a request names by path or by name, when it is of the kind wanted. */
	UObject* ResolveTypeObject(const FString& Text, UClass* Kind)
	{
		UObject* Found = nullptr;
		if (Kind == UClass::StaticClass())
		{
			Found = FAssetOperationBase::GetAssetClassFromAssetName(Text);
		}
		if (!Found && Text.StartsWith(TEXT("/"), ESearchCase::CaseSensitive))
		{
			Found = StaticFindObject(UObject::StaticClass(), nullptr, *Text);
			if (!Found || Found->IsA<UPackage>())
			{
				// An asset (a Blueprint, say) that is not loaded yet: its package is read on demand.
				const FString ObjectPath = FAssetOperationBase::NormalizeAssetPath(Text);
				Found = FAssetOperationBase::AssetExists(ObjectPath) ? StaticLoadObject(UObject::StaticClass(), nullptr, *ObjectPath) : nullptr;
			}
			Found = BlueprintToClass(Found);
		}
		else if (!Found)
		{
			Found = StaticFindFirstObject(Kind, *Text);
			// The C++ spelling of a type ("FVector", "ECollisionChannel") names it too.
			if (!Found && Text.Len() > 2 && (Text[0] == TCHAR('F') || Text[0] == TCHAR('E')) && FChar::IsUpper(Text[1]))
			{
				Found = StaticFindFirstObject(Kind, *Text.RightChop(1));
			}
		}
		return Found && Found->IsA(Kind) ? Found : nullptr;
	}

	FString ReadString(const FJsonObject& Json, const TCHAR* Key)
	{
		FString Value;
		Json.TryGetStringField(Key, Value);
		return Value.TrimStartAndEnd();
	}

	bool ReadFlag(const FJsonObject& Json, const TCHAR* Key)
	{
		bool bValue = false;
		Json.TryGetBoolField(Key, bValue);
		return bValue;
	}

	/** One terminal type (a value's, or a map's key's) read from category, sub_category and sub_category_object. */
	bool ReadTerminal(const FJsonObject& Json, FName& OutCategory, FName& OutSubCategory, UObject*& OutObject, FString& OutError)
	{
		using K2 = UEdGraphSchema_K2;
		const FString CategoryWord = ReadString(Json, TEXT("category"));
		if (CategoryWord.IsEmpty())
		{
			OutError = TEXT("the pin type has no 'category'");
			return false;
		}
		FName Category = FindPinCategory(CategoryWord);
		if (Category.IsNone())
		{
			OutError = FString::Printf(TEXT("unknown pin category '%s' (known: bool, byte, int, int64, real, float, double, name, string, text, object, class, interface, softobject, softclass, struct, enum, delegate, mcdelegate, exec, wildcard, fieldpath)"), *CategoryWord);
			return false;
		}
		const FString SubCategoryWord = ReadString(Json, TEXT("sub_category"));
		FName SubCategory = SubCategoryWord.IsEmpty() ? NAME_None : FName(*SubCategoryWord);

		// The editor keeps every floating-point pin as a real of a given precision.
		if (Category == K2::PC_Float || Category == K2::PC_Double)
		{
			if (SubCategory.IsNone())
			{
				SubCategory = Category;
			}
			Category = K2::PC_Real;
		}
		else if (Category == K2::PC_Real && SubCategory.IsNone())
		{
			SubCategory = K2::PC_Double;
		}
		if (Category == K2::PC_Real && SubCategory != K2::PC_Float && SubCategory != K2::PC_Double)
		{
			OutError = FString::Printf(TEXT("a real number is 'float' or 'double', not '%s'"), *SubCategory.ToString());
			return false;
		}

		const FString ObjectText = ReadString(Json, TEXT("sub_category_object"));
		UClass* Kind = GetTypeObjectKind(Category);
		UObject* Object = nullptr;
		if (!ObjectText.IsEmpty())
		{
			if (!Kind)
			{
				OutError = FString::Printf(TEXT("category '%s' takes no sub_category_object, but '%s' was given"), *Category.ToString(), *ObjectText);
				return false;
			}
			Object = ResolveTypeObject(ObjectText, Kind);
			if (!Object)
			{
				OutError = FString::Printf(TEXT("no %s named '%s' was found for category '%s'"),
					Kind == UClass::StaticClass() ? TEXT("class") : Kind == UScriptStruct::StaticClass() ? TEXT("struct") : TEXT("enum"),
					*ObjectText, *Category.ToString());
				return false;
			}
		}
		else if (Category == K2::PC_Struct || Category == K2::PC_Enum || (IsClassCategory(Category) && SubCategory != K2::PSC_Self))
		{
			OutError = FString::Printf(TEXT("category '%s' needs a sub_category_object naming its %s"), *Category.ToString(),
				Category == K2::PC_Struct ? TEXT("struct") : Category == K2::PC_Enum ? TEXT("enum") : TEXT("class"));
			return false;
		}

		OutCategory = Category;
		OutSubCategory = SubCategory;
		OutObject = Object;
		return true;
	}

	const TCHAR* ContainerWord(EPinContainerType Container)
	{
		switch (Container)
		{
		case EPinContainerType::Array:
			return TEXT("array");
		case EPinContainerType::Set:
			return TEXT("set");
		case EPinContainerType::Map:
			return TEXT("map");
		default:
			return TEXT("none");
		}
	}

	void WriteTerminal(FJsonObject& Json, FName Category, FName SubCategory, const UObject* Object)
	{
		Json.SetStringField(TEXT("category"), Category.IsNone() ? FString() : Category.ToString());
		Json.SetStringField(TEXT("sub_category"), SubCategory.IsNone() ? FString() : SubCategory.ToString());
		Json.SetStringField(TEXT("sub_category_object"), Object ? Object->GetPathName() : FString());
	}
}

bool FAssetOperationBase::ConvertJsonToEdGraphPinType(const TSharedPtr<FJsonObject>& TypeJson, FEdGraphPinType& OutPinType, FString* OutError)
{
	FString Error;
	auto Fail = [&Error, OutError]()
	{
		if (OutError)
		{
			*OutError = Error;
		}
		return false;
	};
	if (!TypeJson.IsValid())
	{
		Error = TEXT("the pin type is not a JSON object");
		return Fail();
	}

	FEdGraphPinType PinType;
	UObject* Object = nullptr;
	if (!ReadTerminal(*TypeJson, PinType.PinCategory, PinType.PinSubCategory, Object, Error))
	{
		return Fail();
	}
	PinType.PinSubCategoryObject = Object;

	// "container_type" wins over its older spelling "container".
	FString ContainerText = TypeJson->HasField(TEXT("container_type")) ? ReadString(*TypeJson, TEXT("container_type")) : ReadString(*TypeJson, TEXT("container"));
	if (ContainerText.Equals(TEXT("array"), ESearchCase::IgnoreCase))
	{
		PinType.ContainerType = EPinContainerType::Array;
	}
	else if (ContainerText.Equals(TEXT("set"), ESearchCase::IgnoreCase))
	{
		PinType.ContainerType = EPinContainerType::Set;
	}
	else if (ContainerText.Equals(TEXT("map"), ESearchCase::IgnoreCase))
	{
		PinType.ContainerType = EPinContainerType::Map;
		const TSharedPtr<FJsonObject>* ValueJson = nullptr;
		if (!TypeJson->TryGetObjectField(TEXT("value_type"), ValueJson) || !ValueJson->IsValid())
		{
			Error = TEXT("a map needs a 'value_type' object with the value's category");
			return Fail();
		}
		UObject* ValueObject = nullptr;
		FString ValueError;
		if (!ReadTerminal(**ValueJson, PinType.PinValueType.TerminalCategory, PinType.PinValueType.TerminalSubCategory, ValueObject, ValueError))
		{
			Error = FString::Printf(TEXT("map value type: %s"), *ValueError);
			return Fail();
		}
		PinType.PinValueType.TerminalSubCategoryObject = ValueObject;
		PinType.PinValueType.bTerminalIsConst = ReadFlag(**ValueJson, TEXT("is_const"));
		PinType.PinValueType.bTerminalIsWeakPointer = ReadFlag(**ValueJson, TEXT("is_weak_pointer"));
		PinType.PinValueType.bTerminalIsUObjectWrapper = ReadFlag(**ValueJson, TEXT("is_u_object_wrapper"));
	}

	PinType.bIsReference = ReadFlag(*TypeJson, TEXT("is_reference"));
	PinType.bIsConst = ReadFlag(*TypeJson, TEXT("is_const"));
	PinType.bIsWeakPointer = ReadFlag(*TypeJson, TEXT("is_weak_pointer"));
	PinType.bIsUObjectWrapper = ReadFlag(*TypeJson, TEXT("is_u_object_wrapper"));
	OutPinType = PinType;
	return true;
}

TSharedPtr<FJsonObject> FAssetOperationBase::ConvertEdGraphPinTypeToJson(const FEdGraphPinType& PinType)
{
	TSharedPtr<FJsonObject> Json = MakeShared<FJsonObject>();
	WriteTerminal(*Json, PinType.PinCategory, PinType.PinSubCategory, PinType.PinSubCategoryObject.Get());
	Json->SetStringField(TEXT("container_type"), ContainerWord(PinType.ContainerType));
	if (PinType.bIsReference)
	{
		Json->SetBoolField(TEXT("is_reference"), true);
	}
	if (PinType.bIsConst)
	{
		Json->SetBoolField(TEXT("is_const"), true);
	}
	if (PinType.bIsWeakPointer)
	{
		Json->SetBoolField(TEXT("is_weak_pointer"), true);
	}
	if (PinType.bIsUObjectWrapper)
	{
		Json->SetBoolField(TEXT("is_u_object_wrapper"), true);
	}
	if (PinType.IsMap())
	{
		const FEdGraphTerminalType& Value = PinType.PinValueType;
		TSharedPtr<FJsonObject> ValueJson = MakeShared<FJsonObject>();
		WriteTerminal(*ValueJson, Value.TerminalCategory, Value.TerminalSubCategory, Value.TerminalSubCategoryObject.Get());
		if (Value.bTerminalIsConst)
		{
			ValueJson->SetBoolField(TEXT("is_const"), true);
		}
		if (Value.bTerminalIsWeakPointer)
		{
			ValueJson->SetBoolField(TEXT("is_weak_pointer"), true);
		}
		if (Value.bTerminalIsUObjectWrapper)
		{
			ValueJson->SetBoolField(TEXT("is_u_object_wrapper"), true);
		}
		Json->SetObjectField(TEXT("value_type"), ValueJson);
	}
	return Json;
}

bool FAssetOperationBase::ConvertPropertyToEdGraphPinType(const FProperty* Property, FEdGraphPinType& OutPinType)
{
	if (!Property)
	{
		return false;
	}
	FEdGraphPinType PinType;
	if (!GetDefault<UEdGraphSchema_K2>()->ConvertPropertyToPinType(Property, PinType))
	{
		return false;
	}
	OutPinType = PinType;
	return true;
}
