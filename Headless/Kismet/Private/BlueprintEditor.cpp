#include "BlueprintEditor.h"

#include "Engine/Blueprint.h"

FBlueprintEditor::FBlueprintEditor() = default;
FBlueprintEditor::~FBlueprintEditor() = default;

void FBlueprintEditor::InitBlueprintEditor(UBlueprint* InBlueprint)
{
	Blueprint = InBlueprint;
	OpenDocuments.Reset();
}

bool FBlueprintEditor::OpenDocument(const UObject* DocumentID, FDocumentTracker::EOpenDocumentCause Cause)
{
	if (!DocumentID)
	{
		return false;
	}
	for (const TWeakObjectPtr<const UObject>& Open : OpenDocuments)
	{
		if (Open.Get() == DocumentID)
		{
			return true;
		}
	}
	OpenDocuments.Add(DocumentID);
	return true;
}

void FBlueprintEditor::CloseDocumentTab(const UObject* DocumentID)
{
	// Tabs of objects that no longer exist are closed along the way.
	for (int32 Index = OpenDocuments.Num() - 1; Index >= 0; --Index)
	{
		const UObject* Open = OpenDocuments[Index].Get();
		if (!Open || Open == DocumentID)
		{
			OpenDocuments.RemoveAt(Index);
		}
	}
}

bool FBlueprintEditor::IsDocumentOpen(const UObject* DocumentID) const
{
	for (const TWeakObjectPtr<const UObject>& Open : OpenDocuments)
	{
		if (DocumentID && Open.Get() == DocumentID)
		{
			return true;
		}
	}
	return false;
}

FName FBlueprintEditor::GetEditorName() const
{
	return FName(TEXT("BlueprintEditor"));
}

void FBlueprintEditor::FocusWindow(UObject* ObjectToFocusOn)
{
	if (ObjectToFocusOn)
	{
		OpenDocument(ObjectToFocusOn);
	}
}

bool FBlueprintEditor::CloseWindow()
{
	OpenDocuments.Reset();
	return true;
}
