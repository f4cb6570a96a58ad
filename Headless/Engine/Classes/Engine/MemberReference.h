#pragma once

#include "CoreMinimal.h"
#include "Misc/Guid.h"
#include "UObject/Class.h"
#include "UObject/Field.h"
#include "UObject/ObjectPtr.h"
#include "UObject/UnrealType.h"
#include "Templates/Casts.h"
#include "Templates/SubclassOf.h"
#include <type_traits>

class UBlueprint;
class UPackage;
struct FSimpleMemberReference;

/**
 * Names a member (a property or a function) the way a Blueprint node keeps it: by name and guid, either on the class
 * that declares it or on "self" (the class of the Blueprint the node lives in), or as a local variable of a function.
 * Nodes keep one of these instead of a pointer so that they survive renames and recompiles of the class.
 */
struct FMemberReference
{
protected:
	/** The class declaring the member (a package for a delegate signature declared outside any class); null for self. */
	mutable TObjectPtr<UObject> MemberParent;
	/** For a local variable: the name of the function it belongs to. */
	mutable FString MemberScope;
	mutable FName MemberName;
	/** The guid of a Blueprint-defined member, which follows it through renames. */
	mutable FGuid MemberGuid;
	mutable bool bSelfContext = false;
	mutable bool bWasDeprecated = false;

public:
	FMemberReference() = default;

	ENGINE_API static UScriptStruct* StaticStruct();

	/** Refers to a member of another class than self. */
	ENGINE_API void SetExternalMember(FName InMemberName, TSubclassOf<UObject> InMemberParentClass);
	ENGINE_API void SetExternalMember(FName InMemberName, TSubclassOf<UObject> InMemberParentClass, FGuid& InMemberGuid);

	/** Refers to a field declared outside any class, such as a global delegate signature. */
	ENGINE_API void SetGlobalField(FName InFieldName, UPackage* InParentPackage);

	/** Refers to a delegate member without a known parent class. */
	ENGINE_API void SetExternalDelegateMember(FName InMemberName);

	/** Refers to a member of the Blueprint's own class. */
	ENGINE_API void SetSelfMember(FName InMemberName);
	ENGINE_API void SetSelfMember(FName InMemberName, FGuid& InMemberGuid);

	/** Refers to a local variable of the function InScope (or named InScopeName). */
	ENGINE_API void SetLocalMember(FName InMemberName, UStruct* InScope, const FGuid InMemberGuid);
	ENGINE_API void SetLocalMember(FName InMemberName, FString InScopeName, const FGuid InMemberGuid);

	/** Sets every part at once; for fixing up old data. */
	ENGINE_API void SetDirect(const FName InMemberName, const FGuid InMemberGuid, TSubclassOf<UObject> InMemberParentClass, bool bIsConsideredSelfContext);

	/** Forgets the scope after a duplication: the parent for a self reference, else the local scope. */
	ENGINE_API void InvalidateScope();

	/** Points at InField, as a self member when bIsConsideredSelfContext. */
	template <class TFieldType>
	void SetFromField(const UField* InField, const bool bIsConsideredSelfContext)
	{
		SetFromObjectField(InField, bIsConsideredSelfContext);
	}
	template <class TFieldType>
	void SetFromField(const FField* InField, const bool bIsConsideredSelfContext)
	{
		SetFromPropertyField(InField, bIsConsideredSelfContext);
	}

	/** Points at InField, as a self member when SelfScope is (or derives from) the class declaring it. */
	template <class TFieldType>
	void SetFromField(const UField* InField, UClass* SelfScope)
	{
		SetFromObjectFieldInScope(InField, SelfScope);
	}
	template <class TFieldType>
	void SetFromField(const FField* InField, UClass* SelfScope)
	{
		SetFromPropertyFieldInScope(InField, SelfScope);
	}

	/** Re-decides self-ness against a new self class (after the Blueprint's parent changed). */
	template <class TFieldType>
	void RefreshGivenNewSelfScope(UClass* SelfScope)
	{
		RefreshSelfScope(SelfScope, std::is_base_of_v<FField, TFieldType>);
	}

	FName GetMemberName() const { return MemberName; }
	FGuid GetMemberGuid() const { return MemberGuid; }
	UClass* GetMemberParentClass() const { return Cast<UClass>(MemberParent.Get()); }
	ENGINE_API UPackage* GetMemberParentPackage() const;

	/** The class the member lives in: SelfScope for self and local members, else the stored parent. */
	UClass* GetMemberParentClass(UClass* SelfScope) const
	{
		return (bSelfContext || !MemberScope.IsEmpty()) ? SelfScope : GetMemberParentClass();
	}

	bool IsSelfContext() const { return bSelfContext; }
	bool IsLocalScope() const { return !MemberScope.IsEmpty(); }
	bool IsDeprecated() const { return bWasDeprecated; }

	/** The function a local member belongs to, looked up in InMemberParentClass. */
	ENGINE_API UStruct* GetMemberScope(UClass* InMemberParentClass) const;
	FString GetMemberScopeName() const { return MemberScope; }

	bool IsSameReference(const FMemberReference& InReference) const
	{
		return bSelfContext == InReference.bSelfContext && MemberParent == InReference.MemberParent && MemberName == InReference.MemberName
			&& MemberGuid == InReference.MemberGuid && MemberScope == InReference.MemberScope;
	}

	bool operator==(const FMemberReference& Other) const { return IsSameReference(Other) && bWasDeprecated == Other.bWasDeprecated; }
	bool operator!=(const FMemberReference& Other) const { return !(*this == Other); }

	/**
	 * The property or function this reference names, or null when it no longer exists. SelfScope is the class of
	 * the Blueprint using the reference (its skeleton class while editing). A Blueprint member found by guid under a
	 * new name updates the stored name.
	 */
	template <class TFieldType>
	TFieldType* ResolveMember(UClass* SelfScope) const
	{
		if constexpr (std::is_base_of_v<FField, TFieldType>)
		{
			return CastField<TFieldType>(ResolveProperty(SelfScope));
		}
		else
		{
			return Cast<TFieldType>(ResolveObjectField(SelfScope));
		}
	}

	template <class TFieldType>
	TFieldType* ResolveMember(UBlueprint* SelfScope) const
	{
		return ResolveMember<TFieldType>(SkeletonClassOf(SelfScope));
	}

	/** The function this reference names, resolved as ResolveMember does; null when it is not a function. */
	UFunction* ResolveMemberFunction(UClass* SelfScope) const
	{
		return ResolveMember<UFunction>(SelfScope);
	}

	/** Fills a simple reference (parent, name, guid) naming InField. */
	template <class TFieldType>
	static void FillSimpleMemberReference(const UField* InField, FSimpleMemberReference& OutReference)
	{
		FillSimpleReference(InField, OutReference);
	}

	/** The function (signature) a simple reference names, or null. */
	template <class TFieldType>
	static TFieldType* ResolveSimpleMemberReference(const FSimpleMemberReference& Reference)
	{
		return Cast<TFieldType>(ResolveSimpleReference(Reference));
	}

	/** No field redirects are configured headless: there is never a remapped field. */
	template <class TFieldType>
	static TFieldType* FindRemappedField(UClass* InitialScope, FName InitialName, bool bInitialScopeMustBeOwnerOfField = false)
	{
		return nullptr;
	}

	/** The class a Blueprint member should be named by: the generated class for a skeleton class. */
	ENGINE_API static UClass* GetAuthoritativeClass(UClass* InClass);

	/**
	 * The guid a Blueprint gives a member of its class (a variable's VarGuid, a function graph's GraphGuid); false
	 * for native members.
	 */
	ENGINE_API static bool GetGuidFromClassByFieldName(const UClass* InClass, FName FieldName, bool bIsProperty, FGuid& OutGuid);
	/** The name of the Blueprint member with the guid, or NAME_None. */
	ENGINE_API static FName GetFieldNameFromClassByGuid(const UClass* InClass, const FGuid& Guid, bool bIsProperty);

protected:
	ENGINE_API void SetGivenSelfScope(const FName InMemberName, const FGuid InMemberGuid, TSubclassOf<UObject> InMemberParentClass, TSubclassOf<UObject> SelfScope) const;

private:
	ENGINE_API void SetFromObjectField(const UField* InField, bool bIsConsideredSelfContext);
	ENGINE_API void SetFromPropertyField(const FField* InField, bool bIsConsideredSelfContext);
	ENGINE_API void SetFromObjectFieldInScope(const UField* InField, UClass* SelfScope);
	ENGINE_API void SetFromPropertyFieldInScope(const FField* InField, UClass* SelfScope);
	ENGINE_API void RefreshSelfScope(UClass* SelfScope, bool bIsProperty);
	ENGINE_API FProperty* ResolveProperty(UClass* SelfScope) const;
	ENGINE_API UField* ResolveObjectField(UClass* SelfScope) const;
	ENGINE_API static UClass* SkeletonClassOf(UBlueprint* Blueprint);
	ENGINE_API static void FillSimpleReference(const UField* InField, FSimpleMemberReference& OutReference);
	ENGINE_API static UField* ResolveSimpleReference(const FSimpleMemberReference& Reference);
};
