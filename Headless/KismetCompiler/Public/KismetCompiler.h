#pragma once

#include "CoreMinimal.h"
#include "Containers/Array.h"
#include "Containers/Map.h"
#include "EdGraph/EdGraphPin.h"
#include "KismetCompilerModule.h"
#include "Templates/Function.h"
#include "Templates/SharedPointer.h"

class FCompilerResultsLog;
class FProperty;
class UBlueprint;
class UBlueprintGeneratedClass;
class UEdGraph;
class UEdGraphNode;
class UEdGraphSchema_K2;
class UFunction;
class UK2Node_EditablePinBase;

/**
 * Compiles one Blueprint: builds its skeleton class (members and signatures) and, for a full compile,
 * its generated class with the class default object's values, then checks every graph the way the
 * editor does and records the verdict in the Blueprint's Status and the results log.
 */
class FKismetCompilerContext
{
public:
	KISMETCOMPILER_API FKismetCompilerContext(UBlueprint* SourceSketch, FCompilerResultsLog& InMessageLog, const FKismetCompilerOptions& InCompilerOptions);
	KISMETCOMPILER_API virtual ~FKismetCompilerContext();

	KISMETCOMPILER_API void Compile();

	using CompilerContextFactoryFunction = TFunction<TSharedPtr<FKismetCompilerContext>(UBlueprint*, FCompilerResultsLog&, const FKismetCompilerOptions&)>;
	/** Lets a Blueprint kind (widgets...) compile its Blueprints, and those of its subclasses, with a context of its own. */
	static KISMETCOMPILER_API void RegisterCompilerForBP(UClass* BPClass, CompilerContextFactoryFunction FactoryFunction);
	/** The context of the most specific registered kind the Blueprint is of, else a plain one. */
	static KISMETCOMPILER_API TSharedPtr<FKismetCompilerContext> GetCompilerForBP(UBlueprint* BP, FCompilerResultsLog& InMessageLog, const FKismetCompilerOptions& InCompileOptions);

	UBlueprint* Blueprint;
	/** The class being built at the moment (skeleton, then generated). */
	UBlueprintGeneratedClass* NewClass = nullptr;
	FCompilerResultsLog& MessageLog;
	FKismetCompilerOptions CompileOptions;
	const UEdGraphSchema_K2* Schema;

protected:
	KISMETCOMPILER_API virtual void ValidateLink(const UEdGraphPin* PinA, const UEdGraphPin* PinB) const;
	KISMETCOMPILER_API virtual void ValidatePin(const UEdGraphPin* Pin) const;
	KISMETCOMPILER_API virtual void ValidateNode(const UEdGraphNode* Node) const;
	/** Disabled nodes and nodes of other graph kinds take no part in compilation. */
	KISMETCOMPILER_API virtual bool CanIgnoreNode(const UEdGraphNode* Node) const;

	/** A property of the class being built for a member; an error when the type cannot be one. */
	KISMETCOMPILER_API FProperty* CreateVariable(const FName VarName, const FEdGraphPinType& VarType);
	/** The class's member variables: the Blueprint's variables, timelines and components; a kind adds its own. */
	KISMETCOMPILER_API virtual void CreateClassVariablesFromBlueprint(TArray<FProperty*>& OutProperties);

private:
	struct FFunctionToBuild;

	UBlueprintGeneratedClass* FindOrMakeClass(bool bSkeleton);
	void CleanAndSanitizeClass(UBlueprintGeneratedClass* ClassToClean);
	void BuildClass(UBlueprintGeneratedClass* Class, bool bSkeleton);
	void GatherFunctions(TArray<FFunctionToBuild>& OutFunctions);
	UFunction* BuildFunction(const FFunctionToBuild& Description);
	void AddParametersFromPins(FFunctionToBuild& Description, const UEdGraphNode* Node, EEdGraphPinDirection Direction, bool bResults) const;
	void SetDefaultsOnClassObject();
	void RelinkDerivedClasses(UClass* Class);
	void ReconstructAllNodes();
	void ValidateGraphs();
	void ValidateGraph(const UEdGraph* Graph);

	/** Old functions of the class being rebuilt, reused by name so that their identity survives. */
	TMap<FName, UFunction*> OldFunctions;
	bool bBuildingSkeleton = false;
};
