#pragma once

#include "CoreMinimal.h"
#include "Subsystems/AssetEditorSubsystem.h"
#include "Templates/SharedPointer.h"
#include "UObject/WeakObjectPtr.h"

class UBlueprint;
class UEdGraph;

/** How CloseDocumentTab picks the tabs to close. */
namespace FDocumentTracker
{
	enum EOpenDocumentCause
	{
		OpenNewDocument,
		ForceOpenNewDocument,
		NavigatingCurrentDocument,
		QuickNavigateCurrentDocument,
		NavigatingHistory,
		RestorePreviousDocument,
		CreatedNewDocument,
	};
}

/**
 * The Blueprint editor window. Headless no window ever opens, so an instance only exists when a caller
 * makes one; it keeps the documents (graphs) it was asked to show so that closing them is observable.
 */
class FBlueprintEditor : public IAssetEditorInstance, public TSharedFromThis<FBlueprintEditor>
{
public:
	KISMET_API FBlueprintEditor();
	KISMET_API virtual ~FBlueprintEditor() override;

	KISMET_API void InitBlueprintEditor(UBlueprint* InBlueprint);
	UBlueprint* GetBlueprintObj() const { return Blueprint.Get(); }

	/** Shows a graph in a tab; returns false when there is no graph. */
	KISMET_API bool OpenDocument(const UObject* DocumentID, FDocumentTracker::EOpenDocumentCause Cause = FDocumentTracker::OpenNewDocument);
	/** Closes every tab showing the object (a graph); nothing happens when none does. */
	KISMET_API void CloseDocumentTab(const UObject* DocumentID);
	KISMET_API bool IsDocumentOpen(const UObject* DocumentID) const;
	int32 GetNumOpenDocuments() const { return OpenDocuments.Num(); }

	KISMET_API virtual FName GetEditorName() const override;
	KISMET_API virtual void FocusWindow(UObject* ObjectToFocusOn = nullptr) override;
	KISMET_API virtual bool CloseWindow() override;

private:
	TWeakObjectPtr<UBlueprint> Blueprint;
	TArray<TWeakObjectPtr<const UObject>> OpenDocuments;
};
