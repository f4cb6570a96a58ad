#include "UObject/Object.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/AssetRegistryTagsContext.h"
#include "ObjectRegistry.h"

using namespace UE::CoreUObject::Private;

IMPLEMENT_CLASS(UObject)

UObject::UObject()
{
}

UObject::UObject(const FObjectInitializer& ObjectInitializer)
{
}

UObject::UObject(EStaticConstructor, EObjectFlags InFlags)
	: UObjectBaseUtility(InFlags)
{
}

UObject::~UObject()
{
}

void UObject::BeginDestroy()
{
	SetFlags(RF_BeginDestroyed);
}

void UObject::FinishDestroy()
{
	SetFlags(RF_FinishDestroyed);
}

bool UObject::ConditionalBeginDestroy()
{
	if (HasAnyFlags(RF_BeginDestroyed))
	{
		return false;
	}
	BeginDestroy();
	return true;
}

bool UObject::ConditionalFinishDestroy()
{
	if (HasAnyFlags(RF_FinishDestroyed) || !HasAnyFlags(RF_BeginDestroyed))
	{
		return false;
	}
	FinishDestroy();
	return true;
}

bool UObject::Modify(bool bAlwaysMarkDirty)
{
	// There is no transaction buffer here, so nothing is recorded for undo; the package still learns it changed.
	if (bAlwaysMarkDirty)
	{
		MarkPackageDirty();
	}
	return false;
}

bool UObject::CanEditChange(const FProperty* InProperty) const
{
	return InProperty && !InProperty->HasAnyPropertyFlags(CPF_EditConst);
}

void UObject::PostEditChange()
{
	FPropertyChangedEvent EmptyEvent(nullptr);
	PostEditChangeProperty(EmptyEvent);
}

bool UObject::Rename(const TCHAR* InName, UObject* NewOuter, ERenameFlags Flags)
{
	const bool bIsPackage = IsA(UPackage::StaticClass());
	if (bIsPackage && NewOuter)
	{
		LogError(FString::Printf(TEXT("Rename: package %s cannot move inside %s"), *GetName(), *NewOuter->GetPathName()));
		return false;
	}
	UObject* TargetOuter = NewOuter ? NewOuter : GetOuter();
	for (const UObject* Check = TargetOuter; Check; Check = Check->GetOuter())
	{
		if (Check == this)
		{
			LogError(FString::Printf(TEXT("Rename: %s cannot move inside itself"), *GetPathName()));
			return false;
		}
	}

	FName NewName;
	if (InName == nullptr || *InName == 0)
	{
		// Moving keeps the name when it is free in the new outer; otherwise a fresh one is made.
		if (NewOuter && !StaticFindObjectFast(nullptr, NewOuter, GetFName()))
		{
			NewName = GetFName();
		}
		else
		{
			NewName = NewOuter ? MakeUniqueObjectName(NewOuter, GetClass()) : GetFName();
		}
	}
	else
	{
		const FString NameString(InName);
		int32 Index;
		if (NameString.FindChar(TEXT('.'), Index) || NameString.FindChar(TEXT(':'), Index))
		{
			LogError(FString::Printf(TEXT("Rename: the name '%s' contains '.' or ':'"), InName));
			return false;
		}
		NewName = FName(InName);
	}

	if (UObject* Existing = StaticFindObjectFast(nullptr, TargetOuter, NewName))
	{
		if (Existing != this)
		{
			if (!(Flags & REN_Test))
			{
				LogError(FString::Printf(TEXT("Rename: %s already exists"), *Existing->GetFullName()));
			}
			return false;
		}
	}
	if (Flags & REN_Test)
	{
		return true;
	}

	if (!(Flags & REN_DoNotDirty))
	{
		Modify();
	}
	UObject* OldOuter = GetOuter();
	const FName OldName = GetFName();
	LowLevelRename(NewName, TargetOuter);
	if (!(Flags & REN_DoNotDirty))
	{
		MarkPackageDirty();
	}
	PostRename(OldOuter, OldName);
	return true;
}

UFunction* UObject::FindFunction(FName InName) const
{
	return GetClass() ? GetClass()->FindFunctionByName(InName) : nullptr;
}

UFunction* UObject::FindFunctionChecked(FName InName) const
{
	UFunction* Result = FindFunction(InName);
	checkf(Result, TEXT("Failed to find function %s in %s"), *InName.ToString(), *GetFullName());
	return Result;
}

void UObject::ProcessEvent(UFunction* Function, void* Parms)
{
	LogError(FString::Printf(TEXT("ProcessEvent: %s cannot be called: the headless editor has no script virtual machine"),
		Function ? *Function->GetPathName() : TEXT("None")));
}

UObject* UObject::GetArchetype() const
{
	if (HasAnyFlags(RF_ClassDefaultObject))
	{
		return GetClass()->GetArchetypeForCDO();
	}
	return GetClass()->GetDefaultObject();
}

bool UObject::IsAsset() const
{
	if (HasAnyFlags(RF_Transient | RF_ClassDefaultObject) || !HasAnyFlags(RF_Public) || !IsValid(this))
	{
		return false;
	}
	const UObject* Outer = GetOuter();
	if (!Outer || !Outer->IsA(UPackage::StaticClass()))
	{
		return false;
	}
	const UPackage* Package = (const UPackage*)Outer;
	return !Package->HasAnyFlags(RF_Transient) && !Package->HasAnyPackageFlags(PKG_CompiledIn);
}

void UObject::GetAssetRegistryTags(FAssetRegistryTagsContext Context) const
{
}

FString UObject::GetDetailedInfo() const
{
	return GetDetailedInfoInternal();
}

UObject* UObject::CreateDefaultSubobject(FName SubobjectName, UClass* ReturnType, UClass* ClassToCreateByDefault, bool bIsRequired, bool bIsTransient)
{
	FStaticConstructObjectParameters Params(ClassToCreateByDefault);
	const FObjectInitializer Initializer(nullptr, Params);
	return Initializer.CreateDefaultSubobject(this, SubobjectName, ReturnType, ClassToCreateByDefault, bIsRequired, bIsTransient);
}

UObject* UObject::GetDefaultSubobjectByName(FName ToFind)
{
	return StaticFindObjectFast(nullptr, this, ToFind);
}
