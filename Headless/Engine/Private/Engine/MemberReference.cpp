#include "Engine/MemberReference.h"

#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectIterator.h"

IMPLEMENT_SCRIPT_STRUCT(FMemberReference, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FObjectProperty, MemberParent, CPF_TObjectPtr, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FStrProperty, MemberScope, CPF_None);
	UE_NATIVE_PROPERTY(FNameProperty, MemberName, CPF_None);
	UE_NATIVE_PROPERTY(FStructProperty, MemberGuid, CPF_None, TBaseStructure<FGuid>::Get());
	UE_NATIVE_PROPERTY(FBoolProperty, bSelfContext, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bWasDeprecated, CPF_None, 0, (uint32)sizeof(bool), true);
)

namespace
{
	/** Delegate signatures declared outside a class end with this; UHT appends it. */
	const TCHAR* const DelegateSignatureSuffix = TEXT("__DelegateSignature");

	UBlueprint* BlueprintOfClass(const UClass* InClass)
	{
		if (UBlueprint* Blueprint = UBlueprint::GetBlueprintFromClass(InClass))
		{
			return Blueprint;
		}
		// A skeleton class is built by the compiler like the generated class but may not say where it came from.
		return InClass ? Cast<UBlueprint>(InClass->ClassGeneratedBy) : nullptr;
	}

	FProperty* FindPropertyIn(const UStruct* Scope, FName Name)
	{
		return (Scope && !Name.IsNone()) ? Scope->FindPropertyByName(Name) : nullptr;
	}

	UFunction* FindFunctionIn(const UClass* Scope, FName Name)
	{
		return (Scope && !Name.IsNone()) ? Scope->FindFunctionByName(Name) : nullptr;
	}
}

UClass* FMemberReference::GetAuthoritativeClass(UClass* InClass)
{
	if (const UBlueprint* Blueprint = BlueprintOfClass(InClass))
	{
		if (Blueprint->GeneratedClass && InClass == Blueprint->SkeletonGeneratedClass.Get())
		{
			return Blueprint->GeneratedClass.Get();
		}
	}
	return InClass;
}

bool FMemberReference::GetGuidFromClassByFieldName(const UClass* InClass, FName FieldName, bool bIsProperty, FGuid& OutGuid)
{
	// The member may be inherited from a parent Blueprint: each Blueprint of the chain knows only its own members.
	for (const UClass* Class = InClass; Class && !FieldName.IsNone(); Class = Class->GetSuperClass())
	{
		const UBlueprint* Blueprint = BlueprintOfClass(Class);
		if (!Blueprint)
		{
			break;
		}
		if (bIsProperty)
		{
			for (const FBPVariableDescription& Variable : Blueprint->NewVariables)
			{
				if (Variable.VarName == FieldName)
				{
					OutGuid = Variable.VarGuid;
					return true;
				}
			}
		}
		else
		{
			for (const UEdGraph* Graph : Blueprint->FunctionGraphs)
			{
				if (Graph && Graph->GetFName() == FieldName)
				{
					OutGuid = Graph->GraphGuid;
					return true;
				}
			}
		}
	}
	return false;
}

FName FMemberReference::GetFieldNameFromClassByGuid(const UClass* InClass, const FGuid& Guid, bool bIsProperty)
{
	for (const UClass* Class = InClass; Class && Guid.IsValid(); Class = Class->GetSuperClass())
	{
		const UBlueprint* Blueprint = BlueprintOfClass(Class);
		if (!Blueprint)
		{
			break;
		}
		if (bIsProperty)
		{
			for (const FBPVariableDescription& Variable : Blueprint->NewVariables)
			{
				if (Variable.VarGuid == Guid)
				{
					return Variable.VarName;
				}
			}
		}
		else
		{
			for (const UEdGraph* Graph : Blueprint->FunctionGraphs)
			{
				if (Graph && Graph->GraphGuid == Guid)
				{
					return Graph->GetFName();
				}
			}
		}
	}
	return NAME_None;
}

void FMemberReference::SetExternalMember(FName InMemberName, TSubclassOf<UObject> InMemberParentClass)
{
	MemberName = InMemberName;
	MemberParent = InMemberParentClass.Get();
	MemberScope.Reset();
	bSelfContext = false;
	bWasDeprecated = false;
}

void FMemberReference::SetExternalMember(FName InMemberName, TSubclassOf<UObject> InMemberParentClass, FGuid& InMemberGuid)
{
	SetExternalMember(InMemberName, InMemberParentClass);
	MemberGuid = InMemberGuid;
}

void FMemberReference::SetGlobalField(FName InFieldName, UPackage* InParentPackage)
{
	MemberName = InFieldName;
	MemberParent = InParentPackage;
	MemberScope.Reset();
	bSelfContext = false;
	bWasDeprecated = false;
}

void FMemberReference::SetExternalDelegateMember(FName InMemberName)
{
	SetExternalMember(InMemberName, nullptr);
}

void FMemberReference::SetSelfMember(FName InMemberName)
{
	MemberName = InMemberName;
	MemberParent = nullptr;
	MemberScope.Reset();
	bSelfContext = true;
	bWasDeprecated = false;
	MemberGuid.Invalidate();
}

void FMemberReference::SetSelfMember(FName InMemberName, FGuid& InMemberGuid)
{
	SetSelfMember(InMemberName);
	MemberGuid = InMemberGuid;
}

void FMemberReference::SetLocalMember(FName InMemberName, UStruct* InScope, const FGuid InMemberGuid)
{
	SetLocalMember(InMemberName, InScope ? InScope->GetName() : FString(), InMemberGuid);
}

void FMemberReference::SetLocalMember(FName InMemberName, FString InScopeName, const FGuid InMemberGuid)
{
	MemberName = InMemberName;
	MemberScope = MoveTemp(InScopeName);
	MemberGuid = InMemberGuid;
	MemberParent = nullptr;
	bSelfContext = false;
	bWasDeprecated = false;
}

void FMemberReference::SetDirect(const FName InMemberName, const FGuid InMemberGuid, TSubclassOf<UObject> InMemberParentClass, bool bIsConsideredSelfContext)
{
	MemberName = InMemberName;
	MemberGuid = InMemberGuid;
	bSelfContext = bIsConsideredSelfContext;
	bWasDeprecated = false;
	MemberParent = InMemberParentClass.Get();
	MemberScope.Reset();
}

void FMemberReference::InvalidateScope()
{
	if (IsSelfContext())
	{
		MemberParent = nullptr;
	}
	else if (IsLocalScope())
	{
		MemberScope.Reset();
		// A local variable without its function is one of the class's own members now.
		bSelfContext = true;
	}
}

UPackage* FMemberReference::GetMemberParentPackage() const
{
	if (UPackage* Package = Cast<UPackage>(MemberParent.Get()))
	{
		return Package;
	}
	return MemberParent ? MemberParent->GetOutermost() : nullptr;
}

UStruct* FMemberReference::GetMemberScope(UClass* InMemberParentClass) const
{
	return MemberScope.IsEmpty() ? nullptr : FindFunctionIn(InMemberParentClass, FName(*MemberScope));
}

void FMemberReference::SetGivenSelfScope(const FName InMemberName, const FGuid InMemberGuid, TSubclassOf<UObject> InMemberParentClass, TSubclassOf<UObject> SelfScope) const
{
	UClass* ParentClass = InMemberParentClass.Get();
	UClass* SelfClass = SelfScope.Get();
	MemberName = InMemberName;
	MemberGuid = InMemberGuid;
	MemberParent = ParentClass ? GetAuthoritativeClass(ParentClass) : nullptr;
	MemberScope.Reset();
	bWasDeprecated = false;

	// A member of the Blueprint's own class (or an ancestor) is reached through self; the skeleton and generated
	// classes of one Blueprint are the same class for this purpose.
	bSelfContext = false;
	if (SelfClass && ParentClass)
	{
		const UBlueprint* SelfBlueprint = BlueprintOfClass(SelfClass);
		bSelfContext = SelfClass->IsChildOf(ParentClass) || (SelfBlueprint && SelfBlueprint == BlueprintOfClass(ParentClass));
	}
	if (bSelfContext)
	{
		MemberParent = nullptr;
	}
}

void FMemberReference::SetFromObjectField(const UField* InField, bool bIsConsideredSelfContext)
{
	if (!InField)
	{
		*this = FMemberReference();
		return;
	}
	UClass* OwnerClass = InField->GetOwnerClass();
	UObject* Parent = OwnerClass;
	if (!Parent && InField->GetName().EndsWith(DelegateSignatureSuffix))
	{
		Parent = InField->GetOutermost();
	}
	MemberName = InField->GetFName();
	MemberScope.Reset();
	bSelfContext = bIsConsideredSelfContext;
	bWasDeprecated = false;
	MemberParent = bIsConsideredSelfContext ? nullptr : Parent;
	if (UClass* ParentClass = GetMemberParentClass())
	{
		MemberParent = GetAuthoritativeClass(ParentClass);
	}
	MemberGuid.Invalidate();
	GetGuidFromClassByFieldName(OwnerClass, MemberName, false, MemberGuid);
}

void FMemberReference::SetFromPropertyField(const FField* InField, bool bIsConsideredSelfContext)
{
	if (!InField)
	{
		*this = FMemberReference();
		return;
	}
	UClass* OwnerClass = InField->GetOwnerClass();
	MemberName = InField->GetFName();
	MemberScope.Reset();
	bSelfContext = bIsConsideredSelfContext;
	bWasDeprecated = false;
	MemberParent = (bIsConsideredSelfContext || !OwnerClass) ? nullptr : GetAuthoritativeClass(OwnerClass);
	MemberGuid.Invalidate();
	GetGuidFromClassByFieldName(OwnerClass, MemberName, true, MemberGuid);
}

void FMemberReference::SetFromObjectFieldInScope(const UField* InField, UClass* SelfScope)
{
	if (!InField)
	{
		*this = FMemberReference();
		return;
	}
	UClass* OwnerClass = InField->GetOwnerClass();
	FGuid FieldGuid;
	GetGuidFromClassByFieldName(OwnerClass, InField->GetFName(), false, FieldGuid);
	if (!OwnerClass)
	{
		// A signature declared in a package: there is no class to be self of.
		SetFromObjectField(InField, false);
		return;
	}
	SetGivenSelfScope(InField->GetFName(), FieldGuid, OwnerClass, SelfScope);
}

void FMemberReference::SetFromPropertyFieldInScope(const FField* InField, UClass* SelfScope)
{
	if (!InField)
	{
		*this = FMemberReference();
		return;
	}
	UClass* OwnerClass = InField->GetOwnerClass();
	FGuid FieldGuid;
	GetGuidFromClassByFieldName(OwnerClass, InField->GetFName(), true, FieldGuid);
	SetGivenSelfScope(InField->GetFName(), FieldGuid, OwnerClass, SelfScope);
}

void FMemberReference::RefreshSelfScope(UClass* SelfScope, bool bIsProperty)
{
	UClass* ParentClass = GetMemberParentClass();
	if (ParentClass && SelfScope)
	{
		GetGuidFromClassByFieldName(ParentClass, MemberName, bIsProperty, MemberGuid);
		SetGivenSelfScope(MemberName, MemberGuid, ParentClass, SelfScope);
	}
}

FProperty* FMemberReference::ResolveProperty(UClass* SelfScope) const
{
	FProperty* Result = nullptr;
	if (IsLocalScope())
	{
		// Local variables live on the function of the skeleton class that declares them.
		Result = FindPropertyIn(GetMemberScope(SelfScope), MemberName);
	}
	else
	{
		UClass* TargetScope = bSelfContext ? SelfScope : GetMemberParentClass();
		Result = FindPropertyIn(TargetScope, MemberName);
		if (Result)
		{
			GetGuidFromClassByFieldName(TargetScope, MemberName, true, MemberGuid);
		}
		else if (TargetScope && MemberGuid.IsValid())
		{
			// Renamed in its Blueprint: the guid still knows it.
			const FName Renamed = GetFieldNameFromClassByGuid(TargetScope, MemberGuid, true);
			if (!Renamed.IsNone())
			{
				MemberName = Renamed;
				Result = FindPropertyIn(TargetScope, MemberName);
			}
		}
	}
	if (Result)
	{
		bWasDeprecated = Result->HasAnyPropertyFlags(CPF_Deprecated);
	}
	return Result;
}

UField* FMemberReference::ResolveObjectField(UClass* SelfScope) const
{
	if (IsLocalScope())
	{
		return nullptr;
	}
	UClass* TargetScope = bSelfContext ? SelfScope : GetMemberParentClass();
	if (TargetScope)
	{
		UFunction* Function = FindFunctionIn(TargetScope, MemberName);
		if (Function)
		{
			GetGuidFromClassByFieldName(TargetScope, MemberName, false, MemberGuid);
		}
		else if (MemberGuid.IsValid())
		{
			const FName Renamed = GetFieldNameFromClassByGuid(TargetScope, MemberGuid, false);
			if (!Renamed.IsNone())
			{
				MemberName = Renamed;
				Function = FindFunctionIn(TargetScope, MemberName);
			}
		}
		return Function;
	}
	if (UPackage* Package = GetMemberParentPackage())
	{
		return FindObject<UFunction>(Package, *MemberName.ToString());
	}
	if (!bSelfContext && MemberName.ToString().EndsWith(DelegateSignatureSuffix))
	{
		// Older references to global signatures carry no package: look through the script packages, in creation order.
		for (TObjectIterator<UPackage> It; It; ++It)
		{
			if (It->HasAnyPackageFlags(PKG_CompiledIn))
			{
				if (UFunction* Signature = FindObject<UFunction>(*It, *MemberName.ToString()))
				{
					MemberParent = *It;
					return Signature;
				}
			}
		}
	}
	return nullptr;
}

UClass* FMemberReference::SkeletonClassOf(UBlueprint* Blueprint)
{
	return Blueprint ? Blueprint->SkeletonGeneratedClass.Get() : nullptr;
}

void FMemberReference::FillSimpleReference(const UField* InField, FSimpleMemberReference& OutReference)
{
	OutReference.Reset();
	if (InField)
	{
		FMemberReference Temp;
		Temp.SetFromObjectField(InField, false);
		OutReference.MemberName = Temp.MemberName;
		OutReference.MemberParent = Temp.MemberParent;
		OutReference.MemberGuid = Temp.MemberGuid;
	}
}

UField* FMemberReference::ResolveSimpleReference(const FSimpleMemberReference& Reference)
{
	FMemberReference Temp;
	// With a guid the name may be stale: resolve by the guid first.
	Temp.MemberName = Reference.MemberGuid.IsValid() ? NAME_None : Reference.MemberName;
	Temp.MemberParent = Reference.MemberParent;
	Temp.MemberGuid = Reference.MemberGuid;
	if (UField* Field = Temp.ResolveObjectField(nullptr))
	{
		return Field;
	}
	Temp.MemberName = Reference.MemberName;
	return Temp.ResolveObjectField(nullptr);
}
