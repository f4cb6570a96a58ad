#include "Operations/BlueprintCompileOperation.h"

#include "AssetOperationBase.h"
#include "BlueprintUtils.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Engine/Blueprint.h"
#include "ToolResult.h"

void FBlueprintCompileOperation::Execute(const FJsonObject& Json, Calvorn::FToolResult& Result)
{
	const TArray<TSharedPtr<FJsonValue>>* Paths = nullptr;
	if (!Json.TryGetArrayField(TEXT("blueprint_paths"), Paths))
	{
		Result.AddErrorMessage(TEXT("Missing required field 'blueprint_paths'"));
		return;
	}
	if (Paths->Num() == 0)
	{
		Result.AddWarningMessage(TEXT("No Blueprints specified for compilation"));
		return;
	}

	TArray<FString> ErrorTexts;
	TArray<FString> WarningTexts;
	int32 SuccessCount = 0;
	int32 FailureCount = 0;
	for (const TSharedPtr<FJsonValue>& Value : *Paths)
	{
		// An element that is no string reads as empty, and so fails to load like any unknown path.
		FString RequestedPath;
		if (Value.IsValid() && Value->Type == EJson::String)
		{
			RequestedPath = Value->AsString();
		}
		const FString Path = FAssetOperationBase::NormalizeAssetPath(RequestedPath);

		UBlueprint* Blueprint = FBlueprintUtils::LoadBlueprint(Path, Result);
		if (!Blueprint)
		{
			ErrorTexts.Add(FString::Printf(TEXT("[%s] Failed to load Blueprint"), *Path));
			++FailureCount;
			continue;
		}

		TArray<FString> Errors;
		TArray<FString> Warnings;
		const bool bCompiled = FBlueprintUtils::CompileBlueprintWithResults(Blueprint, false, Errors, Warnings);
		for (const FString& Error : Errors)
		{
			ErrorTexts.Add(FString::Printf(TEXT("[%s] %s"), *Path, *Error));
		}
		for (const FString& Warning : Warnings)
		{
			WarningTexts.Add(FString::Printf(TEXT("[%s] %s"), *Path, *Warning));
		}
		if (!bCompiled)
		{
			// A Blueprint that does not compile is never saved: the file keeps its last good state.
			++FailureCount;
			continue;
		}
		if (!FBlueprintUtils::SaveBlueprint(Blueprint))
		{
			ErrorTexts.Add(FString::Printf(TEXT("[%s] Compiled successfully but failed to save"), *Path));
			++FailureCount;
			continue;
		}
		Result.AddModifiedObjects(Blueprint);
		++SuccessCount;
	}

	const int32 Total = Paths->Num();
	if (FailureCount == 0)
	{
		for (const FString& Warning : WarningTexts)
		{
			Result.AddWarningMessage(Warning);
		}
		FString Summary = FString::Printf(TEXT("Successfully compiled and saved %d Blueprint(s)"), SuccessCount);
		if (WarningTexts.Num() > 0)
		{
			Summary += FString::Printf(TEXT(" with %d warning(s)"), WarningTexts.Num());
		}
		Result.AddSuccessMessage(Summary);
		return;
	}
	if (SuccessCount == 0)
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Failed to compile all %d Blueprint(s)"), Total));
	}
	else
	{
		Result.AddWarningMessage(FString::Printf(TEXT("Compiled %d/%d Blueprint(s) successfully (%d failed)"), SuccessCount, Total, FailureCount));
	}
	for (const FString& Error : ErrorTexts)
	{
		Result.AddErrorMessage(Error);
	}
	for (const FString& Warning : WarningTexts)
	{
		Result.AddWarningMessage(Warning);
	}
}
