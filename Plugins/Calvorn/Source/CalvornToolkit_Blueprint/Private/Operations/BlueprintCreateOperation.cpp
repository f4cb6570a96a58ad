#include "Operations/BlueprintCreateOperation.h"

#include "BlueprintUtils.h"
#include "Dom/JsonObject.h"
#include "Engine/Blueprint.h"
#include "ModificationReadRegistry.h"
#include "ToolInfo.h"
#include "ToolResult.h"
#include "UObject/Class.h"

void FBlueprintCreateOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	using namespace Calvorn;

	FString Path;
	if (!Json.TryGetStringField(ToolInfo::FieldName_Path, Path) || Path.TrimStartAndEnd().IsEmpty())
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Missing required field '%s'"), ToolInfo::FieldName_Path));
		return;
	}
	const TSharedPtr<FJsonObject>* ParentClass = nullptr;
	if (!Json.TryGetObjectField(TEXT("blueprint_parent_class"), ParentClass))
	{
		Result.AddErrorMessage(TEXT("Missing field : blueprint_parent_class"));
		return;
	}

	UBlueprint* Blueprint = FBlueprintUtils::CreateBlueprint(Path, *ParentClass, Result);
	if (!Blueprint)
	{
		return;
	}

	const FString ObjectPath = Blueprint->GetPathName();
	const UClass* Parent = Blueprint->ParentClass.Get();
	Result.SetData(ToolInfo::FieldName_Path, ObjectPath);
	Result.SetData(TEXT("asset_class"), Blueprint->GetClass()->GetName());
	Result.SetData(TEXT("parent_class"), Parent ? Parent->GetPathName() : FString());
	Result.AddModifiedObjects(Blueprint);

	// Read the new asset back for the client when the schema reader is available in this build.
	if (FModificationReadRegistry::Get().IsReadToolRegistered(ToolInfo::ToolName_ReadBlueprintSchema))
	{
		TSharedPtr<FJsonObject> ReadParameters = MakeShared<FJsonObject>();
		ReadParameters->SetStringField(ToolInfo::FieldName_ReadTool, ToolInfo::ToolName_ReadBlueprintSchema);
		ReadParameters->SetStringField(ToolInfo::FieldName_Path, ObjectPath);
		Result.TrackModification(ToolInfo::ToolName_ReadBlueprintSchema, ReadParameters);
		Result.FinalizeModifications();
	}
	Result.AddSuccessMessage(FString::Printf(TEXT("Created %s '%s' with parent class %s"), *Blueprint->GetClass()->GetName(), *ObjectPath,
		Parent ? *Parent->GetName() : TEXT("None")));
}
