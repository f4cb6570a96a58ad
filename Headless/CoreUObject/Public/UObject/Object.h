#pragma once

#include "UObject/UObjectBaseUtility.h"
#include "UObject/ObjectMacros.h"

class FOutputDevice;
class FAssetRegistryTagsContext;
class UFunction;
class UWorld;
struct FPropertyChangedEvent;
struct FFrame;

/**
 * The base class of every object. Objects are made by NewObject (never by new), live in the global
 * object array, are found by path, and die only through CollectGarbage after being marked as garbage.
 */
class COREUOBJECT_API UObject : public UObjectBaseUtility
{
	DECLARE_CLASS(UObject, UObject, CLASS_Abstract | CLASS_Intrinsic, CASTCLASS_None, TEXT("/Script/CoreUObject"), NO_API)

public:
	using WithinClass = UObject;

	UObject();
	UObject(const FObjectInitializer& ObjectInitializer);
	/** For objects the system builds before construction works (intrinsic classes). */
	UObject(EStaticConstructor, EObjectFlags InFlags);
	virtual ~UObject() override;

	// Lifetime notifications, called by the object system.

	/** After the C++ constructor and after property values were initialised from the archetype. */
	virtual void PostInitProperties() {}
	/** After the object was read from a package. */
	virtual void PostLoad() {}
	/** After DuplicateObject copied the object. */
	virtual void PostDuplicate(bool bDuplicateForPIE) {}
	/** After Rename. */
	virtual void PostRename(UObject* OldOuter, const FName OldName) {}
	/** First stage of destruction, called by CollectGarbage before the object is freed. */
	virtual void BeginDestroy();
	virtual bool IsReadyForFinishDestroy() { return true; }
	virtual void FinishDestroy();
	bool ConditionalBeginDestroy();
	bool ConditionalFinishDestroy();

	// Editing

	/** Records the object for undo and marks its package dirty (headless: no transaction buffer). */
	virtual bool Modify(bool bAlwaysMarkDirty = true);
	virtual bool CanEditChange(const FProperty* InProperty) const;
	virtual void PreEditChange(FProperty* PropertyAboutToChange) {}
	virtual void PostEditChangeProperty(FPropertyChangedEvent& PropertyChangedEvent) {}
	/** Calls PostEditChangeProperty with an empty event. */
	void PostEditChange();

	/**
	 * Gives the object a new name and/or outer. A null NewName keeps the name; with REN_Test only checks.
	 * Fails (false) when another object already has that name in the target outer.
	 */
	virtual bool Rename(const TCHAR* NewName = nullptr, UObject* NewOuter = nullptr, ERenameFlags Flags = REN_None);

	// Reflection

	/** The function named InName on this object's class or its super classes; null if none. */
	UFunction* FindFunction(FName InName) const;
	UFunction* FindFunctionChecked(FName InName) const;
	/**
	 * Calls a function with its parameters packed in Parms (laid out by the function's properties).
	 * Headless functions have no script VM: only functions with a native thunk run.
	 */
	virtual void ProcessEvent(UFunction* Function, void* Parms);

	/** The object this one takes its defaults from: its class default object, or the template it was made from. */
	UObject* GetArchetype() const;
	/** True for the main object of an asset package (public, not transient, directly under the package). */
	virtual bool IsAsset() const;
	/** Adds the tags the asset registry records for this asset (none by default). */
	virtual void GetAssetRegistryTags(FAssetRegistryTagsContext Context) const;
	virtual UWorld* GetWorld() const { return nullptr; }
	virtual bool IsEditorOnly() const { return false; }
	/** Text used in the editor to describe the object. */
	virtual FString GetDesc() { return TEXT(""); }
	virtual FString GetDetailedInfoInternal() const { return TEXT("No_Detailed_Info_Specified"); }
	FString GetDetailedInfo() const;

	/** Writes extra text after the properties when the object is copied as text (T3D); nothing by default. */
	virtual void ExportCustomProperties(FOutputDevice& Out, uint32 Indent) {}
	/** Reads what ExportCustomProperties wrote; nothing by default. */
	virtual void ImportCustomProperties(const TCHAR* SourceText, class FFeedbackContext* Warn) {}

	/**
	 * Makes a subobject of the given class named SubobjectName inside this object, as class constructors
	 * do for their components. Returns the existing one if a subobject of that name already exists.
	 */
	UObject* CreateDefaultSubobject(FName SubobjectName, UClass* ReturnType, UClass* ClassToCreateByDefault, bool bIsRequired, bool bIsTransient);
	template <class TReturnType>
	TReturnType* CreateDefaultSubobject(FName SubobjectName, bool bTransient = false)
	{
		UClass* ReturnType = TReturnType::StaticClass();
		return static_cast<TReturnType*>(CreateDefaultSubobject(SubobjectName, ReturnType, ReturnType, true, bTransient));
	}
	template <class TReturnType, class TClassToConstructByDefault>
	TReturnType* CreateDefaultSubobject(FName SubobjectName, bool bTransient = false)
	{
		return static_cast<TReturnType*>(CreateDefaultSubobject(SubobjectName, TReturnType::StaticClass(), TClassToConstructByDefault::StaticClass(), true, bTransient));
	}
	/** The subobject named ToFind directly inside this object (garbage excluded), or null. */
	UObject* GetDefaultSubobjectByName(FName ToFind);
};
