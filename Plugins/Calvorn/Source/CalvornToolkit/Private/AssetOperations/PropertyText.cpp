#include "AssetOperationBase.h"

#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/UnrealType.h"

namespace
{
	/** The property of the object's class (or a parent) by name, compared without case as FName does. */
	FProperty* FindObjectProperty(const UObject* Object, const FString& PropertyName)
	{
		const FString Name = PropertyName.TrimStartAndEnd();
		if (!Object || Name.IsEmpty())
		{
			return nullptr;
		}
		return Object->GetClass()->FindPropertyByName(FName(*Name));
	}

	bool BelongsTo(const FProperty* Property, const UObject* Object)
	{
		const UStruct* Owner = Property->GetOwnerStruct();
		return Owner && Object->GetClass()->IsChildOf(Owner);
	}
}

FString FAssetOperationBase::GetPropertyValueAsString(const UObject* Object, const FProperty* Property)
{
	if (!Object || !Property || !BelongsTo(Property, Object))
	{
		return FString();
	}
	FString Text;
	for (int32 Index = 0; Index < Property->GetArrayDim(); ++Index)
	{
		FString Element;
		// Always the value itself: a value equal to the type's zero is still a value ("False", "0").
		Property->ExportTextItem_Direct(Element, Property->ContainerPtrToValuePtr<void>(Object, Index), nullptr, const_cast<UObject*>(Object), PPF_None);
		if (Property->GetArrayDim() == 1)
		{
			Text = MoveTemp(Element);
		}
		else
		{
			// A fixed-size array reads as the editor lists it: one element after the other in brackets.
			Text += Index == 0 ? TEXT("(") : TEXT(",");
			Text += Element;
		}
	}
	if (Property->GetArrayDim() > 1)
	{
		Text += TEXT(")");
	}
	return Text;
}

bool FAssetOperationBase::GetPropertyValueAsString(const UObject* Object, const FProperty* Property, FString& OutValue)
{
	if (!Object || !Property || !BelongsTo(Property, Object))
	{
		return false;
	}
	OutValue = GetPropertyValueAsString(Object, Property);
	return true;
}

bool FAssetOperationBase::GetPropertyValueAsString(const UObject* Object, const FString& PropertyName, FString& OutValue)
{
	const FProperty* Property = FindObjectProperty(Object, PropertyName);
	if (!Property)
	{
		return false;
	}
	OutValue = GetPropertyValueAsString(Object, Property);
	return true;
}

bool FAssetOperationBase::SetPropertyValueAsString(UObject* Object, const FString& PropertyName, const FString& Value, FString& OutError)
{
	if (!Object)
	{
		OutError = TEXT("no object was given");
		return false;
	}
	FProperty* Property = FindObjectProperty(Object, PropertyName);
	if (!Property)
	{
		OutError = FString::Printf(TEXT("%s has no property named '%s'"), *Object->GetClass()->GetName(), *PropertyName);
		return false;
	}
	if (Property->GetArrayDim() != 1)
	{
		OutError = FString::Printf(TEXT("property '%s' is a fixed-size array; set its elements one by one"), *Property->GetName());
		return false;
	}

	// Read into a scratch value first, so a text that fails halfway leaves the property as it was.
	void* Target = Property->ContainerPtrToValuePtr<void>(Object);
	TArray<uint8> Scratch;
	Scratch.AddZeroed(FMath::Max(Property->GetSize(), 1));
	Property->InitializeValue(Scratch.GetData());
	Property->CopyCompleteValue(Scratch.GetData(), Target);

	const FString Text = Value.TrimStartAndEnd();
	const TCHAR* End = Property->ImportText_Direct(*Text, Scratch.GetData(), Object, PPF_None);
	bool bRead = End != nullptr;
	if (bRead)
	{
		while (*End && FChar::IsWhitespace(*End))
		{
			++End;
		}
		bRead = *End == TCHAR('\0');
	}
	if (bRead)
	{
		Object->Modify();
		Property->CopyCompleteValue(Target, Scratch.GetData());
	}
	Property->DestroyValue(Scratch.GetData());
	if (!bRead)
	{
		OutError = FString::Printf(TEXT("'%s' is not a valid value for property '%s' (%s)"), *Value, *Property->GetName(), *Property->GetCPPType());
		return false;
	}
	Object->PostEditChange();
	return true;
}
