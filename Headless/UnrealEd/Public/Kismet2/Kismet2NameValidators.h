#pragma once

#include "CoreMinimal.h"
#include "Containers/Set.h"
#include "Containers/UnrealString.h"
#include "Internationalization/Text.h"
#include "UObject/NameTypes.h"

class UBlueprint;
class UStruct;

/** Characters a Blueprint member name may not contain. */
#define UE_BLUEPRINT_INVALID_NAME_CHARACTERS TEXT("\"',/.:|&!~\n\r\t@#(){}[]=;^%$`")

/** The verdict of a name validator. */
enum class EValidatorResult
{
	Ok,
	AlreadyInUse,
	EmptyName,
	ExistingName,
	ContainsInvalidCharacters,
	TooLong,
	LocallyInUse,
};

/** Decides whether a name may be given to something. */
class INameValidatorInterface
{
public:
	virtual ~INameValidatorInterface() = default;

	virtual EValidatorResult IsValid(const FName& Name, bool bOriginal = false) = 0;
	virtual EValidatorResult IsValid(const FString& Name, bool bOriginal = false) = 0;

	/** What the editor says about a refused name. */
	UNREALED_API static FText GetErrorText(const FString& Name, EValidatorResult ErrorCode);
	FString GetErrorString(const FString& Name, EValidatorResult ErrorCode) { return GetErrorText(Name, ErrorCode).ToString(); }

	/** Turns InOutName into a valid name by appending "_1", "_2"...; AlreadyInUse when it had to change it. */
	UNREALED_API EValidatorResult FindValidString(FString& InOutName);

	/** True when the Blueprint holds no object of that name. */
	UNREALED_API static bool BlueprintObjectNameIsUnique(UBlueprint* Blueprint, const FName& Name);
};

/** Names of a Blueprint's members: variables, functions, graphs, components, timelines and local variables. */
class FKismetNameValidator : public INameValidatorInterface
{
public:
	/** ExistingName is the member's current name (always valid); Scope checks against a function's locals. */
	UNREALED_API FKismetNameValidator(const UBlueprint* Blueprint, FName InExistingName = NAME_None, const UStruct* InScope = nullptr);
	virtual ~FKismetNameValidator() override = default;

	UNREALED_API static int32 GetMaximumNameLength();

	UNREALED_API virtual EValidatorResult IsValid(const FString& Name, bool bOriginal = false) override;
	UNREALED_API virtual EValidatorResult IsValid(const FName& Name, bool bOriginal = false) override;

private:
	TSet<FName> Names;
	const UBlueprint* BlueprintObject;
	FName ExistingName;
	const UStruct* Scope;
};

/** Names checked against a fixed set of strings. */
class FStringSetNameValidator : public INameValidatorInterface
{
public:
	explicit FStringSetNameValidator(const FString& InExistingName) : ExistingName(InExistingName) {}

	UNREALED_API virtual EValidatorResult IsValid(const FString& Name, bool bOriginal = false) override;
	UNREALED_API virtual EValidatorResult IsValid(const FName& Name, bool bOriginal = false) override;

protected:
	TSet<FString> Names;
	FString ExistingName;
};
