#pragma once

#include "CoreMinimal.h"
#include "Containers/Array.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

/** An editor window open on assets. */
class IAssetEditorInstance
{
public:
	virtual ~IAssetEditorInstance() = default;
	virtual FName GetEditorName() const = 0;
	virtual void FocusWindow(UObject* ObjectToFocusOn = nullptr) = 0;
	virtual bool CloseWindow() = 0;
};

/** Keeps track of the asset editors that are open. None ever is headless. */
class UAssetEditorSubsystem : public UObject
{
	DECLARE_CLASS(UAssetEditorSubsystem, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/UnrealEd"), UNREALED_API)

public:
	/** The editor open on Asset, or null; bFocusIfOpen brings it forward. */
	UNREALED_API IAssetEditorInstance* FindEditorForAsset(UObject* Asset, bool bFocusIfOpen);
	UNREALED_API TArray<IAssetEditorInstance*> FindEditorsForAsset(UObject* Asset);
	UNREALED_API TArray<UObject*> GetAllEditedAssets();
	/** Opening an editor is not possible headless: false. */
	UNREALED_API bool OpenEditorForAsset(UObject* Asset);
	UNREALED_API int32 CloseAllEditorsForAsset(UObject* Asset);
};
