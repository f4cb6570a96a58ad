#include "Subsystems/AssetEditorSubsystem.h"

#include "Editor.h"
#include "UObject/Package.h"

IMPLEMENT_CLASS(UAssetEditorSubsystem)

IAssetEditorInstance* UAssetEditorSubsystem::FindEditorForAsset(UObject* Asset, bool bFocusIfOpen)
{
	// No asset editor window ever opens headless.
	return nullptr;
}

TArray<IAssetEditorInstance*> UAssetEditorSubsystem::FindEditorsForAsset(UObject* Asset)
{
	return TArray<IAssetEditorInstance*>();
}

TArray<UObject*> UAssetEditorSubsystem::GetAllEditedAssets()
{
	return TArray<UObject*>();
}

bool UAssetEditorSubsystem::OpenEditorForAsset(UObject* Asset)
{
	return false;
}

int32 UAssetEditorSubsystem::CloseAllEditorsForAsset(UObject* Asset)
{
	return 0;
}

IMPLEMENT_CLASS(UEditorEngine)

bool GIsEditor = true;
bool GIsSavingPackage = false;

bool IsGarbageCollecting()
{
	return false;
}

UObject* UEditorEngine::GetEditorSubsystemBase(UClass* SubsystemClass) const
{
	if (!SubsystemClass)
	{
		return nullptr;
	}
	UEditorEngine* Self = const_cast<UEditorEngine*>(this);
	if (UObject* Existing = StaticFindObject(SubsystemClass, Self, *SubsystemClass->GetName(), true))
	{
		return Existing;
	}
	return NewObject<UObject>(Self, SubsystemClass, SubsystemClass->GetFName(), RF_Transient);
}

namespace UE::Editor
{
	UEditorEngine* GetEditorEngine()
	{
		static UEditorEngine* Engine = []
		{
			UEditorEngine* Made = NewObject<UEditorEngine>(GetTransientPackage(), FName(TEXT("EditorEngine")), RF_Transient);
			Made->AddToRoot();
			return Made;
		}();
		return Engine;
	}
}
