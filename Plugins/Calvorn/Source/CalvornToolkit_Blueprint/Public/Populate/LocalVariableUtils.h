#pragma once

#include "CoreMinimal.h"
#include "Populate/GraphModificationRecords.h"

class FJsonObject;
class UBlueprint;
class UEdGraph;
class UK2Node_FunctionEntry;
struct FBPVariableDescription;
struct FEdGraphPinType;

namespace Calvorn
{
	class FToolResult;
}

/** One entry of "local_variables". */
struct CALVORNTOOLKIT_BLUEPRINT_API FLocalVariableRequest
{
	enum class EAction : uint8
	{
		Add = 0,
		Modify = 1,
		Remove = 2,
	};

	FString Name;
	EAction Action = EAction::Add;
	/** Unset when no "type" was given (a modify without a type change, or a removal). */
	TOptional<FPinTypeRecord> Type;
	FString DefaultValue;
	bool bHasDefaultValue = false;
};

/** What applying the local variables did, for the telemetry. */
struct CALVORNTOOLKIT_BLUEPRINT_API FLocalVariableOutcome
{
	int32 Added = 0;
	int32 Modified = 0;
	int32 Removed = 0;
	TArray<FString> Failures;
};

/** Local variables of a function graph: entries of LocalVariables on its function entry node. */
class CALVORNTOOLKIT_BLUEPRINT_API FLocalVariableUtils
{
public:
	/**
	 * Reads "local_variables" (names to definitions) in the object's order. A null object is true with no
	 * records; the first malformed definition adds an error to Result and gives false.
	 */
	static bool ParseLocalVariables(const TSharedPtr<FJsonObject>& Json, TArray<FLocalVariableRequest>& Out, Calvorn::FToolResult& Result);

	/**
	 * Adds and changes the variables in request order, then removes those asked for. A graph without a
	 * function entry gets a plain warning and is no failure; any other failure adds an error and gives false
	 * at once, leaving what was done before it.
	 */
	static bool ApplyLocalVariables(UBlueprint* Blueprint, UEdGraph* Graph, const TArray<FLocalVariableRequest>& Requests, FLocalVariableOutcome& Out, Calvorn::FToolResult& Result);

	/** The pin type of a parsed definition (see FGraphModificationParser::BuildPinType). */
	[[nodiscard]] static FEdGraphPinType BuildLocalVariablePinType(const FPinTypeRecord& Type);

	/** The entry of that name, without case, or null. */
	[[nodiscard]] static FBPVariableDescription* FindLocalVariable(UK2Node_FunctionEntry* EntryNode, const FString& Name);
};
