#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

class UAssetEditorSubsystem;

/** True in the editor; the headless editor is one. */
extern UNREALED_API bool GIsEditor;
/** True while a package is being written; the engine refuses some edits meanwhile. */
extern UNREALED_API bool GIsSavingPackage;
/** True while the garbage collector runs. Collection here is an explicit call, so never during an edit. */
UNREALED_API bool IsGarbageCollecting();

/** The editor engine: the owner of the editor subsystems. */
class UEditorEngine : public UObject
{
	DECLARE_CLASS(UEditorEngine, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/UnrealEd"), UNREALED_API)

public:
	template <typename TSubsystemClass>
	TSubsystemClass* GetEditorSubsystem() const
	{
		return static_cast<TSubsystemClass*>(GetEditorSubsystemBase(TSubsystemClass::StaticClass()));
	}

	/** The one subsystem of that class, made on first request. */
	UNREALED_API UObject* GetEditorSubsystemBase(UClass* SubsystemClass) const;
};

namespace UE::Editor
{
	/** Headless: the editor engine, made on first use (rooted, never collected). */
	UNREALED_API UEditorEngine* GetEditorEngine();
}

/** The editor engine. Headless it comes into being on first use, so it is an expression, not a variable. */
#define GEditor (::UE::Editor::GetEditorEngine())
