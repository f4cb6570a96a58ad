#include "Kismet2/Kismet2NameValidators.h"

#include "Engine/Blueprint.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "UObject/Class.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectGlobals.h"

#if __has_include("K2Node_FunctionEntry.h")
#include "K2Node_FunctionEntry.h"
#define CALVORN_HAS_FUNCTION_ENTRY 1
#else
#define CALVORN_HAS_FUNCTION_ENTRY 0
#endif

namespace
{
	/** Names longer than this are refused; the limit the editor puts on member names. */
	constexpr int32 BlueprintNameMaxLength = 100;
	/** FName's own limit: longer text never becomes a name. */
	constexpr int32 NameSizeLimit = 1024;
}

FText INameValidatorInterface::GetErrorText(const FString& Name, EValidatorResult ErrorCode)
{
	switch (ErrorCode)
	{
	case EValidatorResult::EmptyName:
		return FText::FromString(TEXT("Name cannot be empty."));
	case EValidatorResult::AlreadyInUse:
		return FText::FromString(TEXT("Name is already in use."));
	case EValidatorResult::ExistingName:
		return FText::FromString(TEXT("Name cannot be the same as the existing name."));
	case EValidatorResult::ContainsInvalidCharacters:
	{
		// The name check says which characters are at fault.
		FText Reason = FText::FromString(TEXT("Name cannot contain invalid characters."));
		FName::IsValidXName(Name, UE_BLUEPRINT_INVALID_NAME_CHARACTERS, &Reason);
		return Reason;
	}
	case EValidatorResult::TooLong:
		return FText::FromString(TEXT("Names must have fewer than 100 characters!"));
	case EValidatorResult::LocallyInUse:
		return FText::FromString(TEXT("Conflicts with another object in the same scope!"));
	case EValidatorResult::Ok:
		return FText();
	}
	return FText::FromString(TEXT("Unknown error"));
}

EValidatorResult INameValidatorInterface::FindValidString(FString& InOutName)
{
	const FString DesiredName = InOutName;
	FString Candidate = DesiredName;
	for (int32 Suffix = 1;; ++Suffix)
	{
		const EValidatorResult Result = IsValid(Candidate, true);
		if (Result == EValidatorResult::Ok)
		{
			InOutName = Candidate;
			return Candidate == DesiredName ? EValidatorResult::Ok : EValidatorResult::AlreadyInUse;
		}
		if (Result != EValidatorResult::AlreadyInUse && Result != EValidatorResult::LocallyInUse && Result != EValidatorResult::ExistingName)
		{
			// A suffix cannot repair an empty, over-long or malformed name.
			return Result;
		}
		Candidate = FString::Printf(TEXT("%s_%d"), *DesiredName, Suffix);
	}
}

bool INameValidatorInterface::BlueprintObjectNameIsUnique(UBlueprint* Blueprint, const FName& Name)
{
	return StaticFindObject(nullptr, Blueprint, *Name.ToString()) == nullptr;
}

FKismetNameValidator::FKismetNameValidator(const UBlueprint* Blueprint, FName InExistingName, const UStruct* InScope)
	: BlueprintObject(Blueprint)
	, ExistingName(InExistingName)
	, Scope(InScope)
{
	if (Blueprint)
	{
		FBlueprintEditorUtils::GetClassVariableList(Blueprint, Names, true);
		FBlueprintEditorUtils::GetFunctionNameList(Blueprint, Names);
		FBlueprintEditorUtils::GetAllGraphNames(Blueprint, Names);
		FBlueprintEditorUtils::GetSCSVariableNameList(Blueprint, Names);
		FBlueprintEditorUtils::GetImplementingBlueprintsFunctionNameList(Blueprint, Names);
	}
}

int32 FKismetNameValidator::GetMaximumNameLength()
{
	return BlueprintNameMaxLength;
}

EValidatorResult FKismetNameValidator::IsValid(const FString& Name, bool bOriginal)
{
	if (Name.Len() >= NameSizeLimit)
	{
		return EValidatorResult::TooLong;
	}
	if (!FName::IsValidXName(Name, UE_BLUEPRINT_INVALID_NAME_CHARACTERS))
	{
		return EValidatorResult::ContainsInvalidCharacters;
	}
	return IsValid(FName(*Name), bOriginal);
}

EValidatorResult FKismetNameValidator::IsValid(const FName& Name, bool bOriginal)
{
	if (Name == NAME_None)
	{
		return EValidatorResult::EmptyName;
	}
	if (Name == ExistingName)
	{
		return EValidatorResult::Ok;
	}
	if (Name.ToString().Len() > BlueprintNameMaxLength)
	{
		return EValidatorResult::TooLong;
	}
	if (Names.Contains(Name))
	{
		return EValidatorResult::AlreadyInUse;
	}
	// Any object inside the Blueprint (a graph, a timeline template) holds its name too.
	if (BlueprintObject && StaticFindObject(nullptr, const_cast<UBlueprint*>(BlueprintObject), *Name.ToString(), true))
	{
		return EValidatorResult::AlreadyInUse;
	}
	if (Scope)
	{
		if (Scope->FindPropertyByName(Name))
		{
			return EValidatorResult::LocallyInUse;
		}
		return EValidatorResult::Ok;
	}
#if CALVORN_HAS_FUNCTION_ENTRY
	// Without a scope, a member may not take the name of any function's local variable.
	TArray<UK2Node_FunctionEntry*> Entries;
	FBlueprintEditorUtils::GetAllNodesOfClass(BlueprintObject, Entries);
	for (const UK2Node_FunctionEntry* Entry : Entries)
	{
		for (const FBPVariableDescription& Local : Entry->LocalVariables)
		{
			if (Local.VarName == Name)
			{
				return EValidatorResult::AlreadyInUse;
			}
		}
	}
#endif
	return EValidatorResult::Ok;
}

EValidatorResult FStringSetNameValidator::IsValid(const FString& Name, bool bOriginal)
{
	if (Name.IsEmpty())
	{
		return EValidatorResult::EmptyName;
	}
	if (Name == ExistingName)
	{
		return EValidatorResult::ExistingName;
	}
	return Names.Contains(Name) ? EValidatorResult::AlreadyInUse : EValidatorResult::Ok;
}

EValidatorResult FStringSetNameValidator::IsValid(const FName& Name, bool bOriginal)
{
	return IsValid(Name.ToString(), bOriginal);
}
