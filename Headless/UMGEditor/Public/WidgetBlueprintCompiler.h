#pragma once

#include "CoreMinimal.h"
#include "KismetCompiler.h"

class UWidgetBlueprint;

/**
 * Compiles Widget Blueprints: besides what every Blueprint's class has, the widgets marked as variables and the
 * animations become members of the generated class.
 */
class FWidgetBlueprintCompilerContext : public FKismetCompilerContext
{
public:
	UMGEDITOR_API FWidgetBlueprintCompilerContext(UWidgetBlueprint* SourceSketch, FCompilerResultsLog& InMessageLog, const FKismetCompilerOptions& InCompilerOptions);

	UWidgetBlueprint* WidgetBlueprint() const;

protected:
	UMGEDITOR_API virtual void CreateClassVariablesFromBlueprint(TArray<FProperty*>& OutProperties) override;

private:
	/** The skeleton and the generated class both take the members; a clash is reported once. */
	void ReportNameClash(const TCHAR* Kind, const UObject* Member);

	TSet<FName> ReportedClashes;
};

namespace UE::UMGEditor
{
	/**
	 * Registers the Widget Blueprint compiler with the Blueprint compiler, once. The editor does this when its
	 * widget module starts; here every Widget Blueprint calls it when made or loaded, before it can be compiled.
	 */
	UMGEDITOR_API void RegisterWidgetBlueprintCompiler();
}
