#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"
#include "Math/Vector2D.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"

class UEdGraph;

/** What connecting two pins would do. */
enum ECanCreateConnectionResponse : int
{
	/** Link the pins. */
	CONNECT_RESPONSE_MAKE,
	/** The pins may not be linked. */
	CONNECT_RESPONSE_DISALLOW,
	/** Break the other links of pin A, then link. */
	CONNECT_RESPONSE_BREAK_OTHERS_A,
	/** Break the other links of pin B, then link. */
	CONNECT_RESPONSE_BREAK_OTHERS_B,
	/** Break the other links of both pins, then link. */
	CONNECT_RESPONSE_BREAK_OTHERS_AB,
	/** Link through a conversion node. */
	CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE,
	/** Link after promoting the type of one pin. */
	CONNECT_RESPONSE_MAKE_WITH_PROMOTION,
	CONNECT_RESPONSE_MAX,
};

/** Which kind of graph a schema sees. */
enum EGraphType : int
{
	GT_Function,
	GT_Ubergraph,
	GT_Macro,
	GT_Animation,
	GT_StateMachine,
	GT_MAX,
};

/** The answer of CanCreateConnection: what would happen, and a message for the user. */
struct FPinConnectionResponse
{
	FText Message;
	ECanCreateConnectionResponse Response = CONNECT_RESPONSE_MAKE;

	FPinConnectionResponse() = default;
	FPinConnectionResponse(const ECanCreateConnectionResponse InResponse, FText InMessage)
		: Message(MoveTemp(InMessage))
		, Response(InResponse)
	{
	}
	FPinConnectionResponse(const ECanCreateConnectionResponse InResponse, const FString& InMessage)
		: Message(FText::FromString(InMessage))
		, Response(InResponse)
	{
	}
	FPinConnectionResponse(const ECanCreateConnectionResponse InResponse, const TCHAR* InMessage)
		: Message(FText::FromString(FString(InMessage)))
		, Response(InResponse)
	{
	}

	/** Whether the pins link directly, without a conversion or promotion and without breaking links. */
	bool CanSafeConnect() const { return Response == CONNECT_RESPONSE_MAKE; }
	/** A fatal answer is one the user may not override. */
	bool IsFatal() const { return Response == CONNECT_RESPONSE_DISALLOW && bIsFatal; }
	void SetFatal() { bIsFatal = true; }

	bool operator==(const FPinConnectionResponse& Other) const
	{
		return Response == Other.Response && Message.ToString() == Other.Message.ToString() && bIsFatal == Other.bIsFatal;
	}

private:
	bool bIsFatal = false;
};

/** An entry of a graph's action menu; subclasses say what it does. */
struct FEdGraphSchemaAction : public TSharedFromThis<FEdGraphSchemaAction>
{
	ENGINE_API FEdGraphSchemaAction();
	ENGINE_API FEdGraphSchemaAction(FText InNodeCategory, FText InMenuDesc, FText InToolTip, const int32 InGrouping, FText InKeywords = FText(), int32 InSectionID = 0);
	virtual ~FEdGraphSchemaAction() = default;

	static FName StaticGetTypeId() { static const FName Type(TEXT("FEdGraphSchemaAction")); return Type; }
	virtual FName GetTypeId() const { return StaticGetTypeId(); }

	ENGINE_API void UpdateSearchData(FText NewMenuDescription, FText NewToolTipDescription, FText NewCategory, FText NewKeywords);
	ENGINE_API void SetCategory(FText NewCategory);

	const FText& GetMenuDescription() const { return MenuDescription; }
	const FText& GetTooltipDescription() const { return TooltipDescription; }
	const FText& GetCategory() const { return Category; }
	const FText& GetKeywords() const { return Keywords; }
	/** Menu description, keywords and category as one lower-case string to search in. */
	ENGINE_API const FString& GetFullSearchText() const { return FullSearchText; }

	virtual bool IsParentable() const { return false; }
	virtual bool IsAVariable() const { return false; }
	virtual bool IsA(const FName& InType) const { return InType == GetTypeId(); }

	/** Does what the entry offers; returns the node it made, if any. */
	virtual UEdGraphNode* PerformAction(UEdGraph* ParentGraph, UEdGraphPin* FromPin, const FVector2f& Location, bool bSelectNewNode = true) { return nullptr; }
	ENGINE_API virtual UEdGraphNode* PerformAction(UEdGraph* ParentGraph, TArray<UEdGraphPin*>& FromPins, const FVector2f& Location, bool bSelectNewNode = true);

	/** Sorting group; higher comes first. */
	int32 Grouping = 0;
	int32 SectionID = 0;

private:
	FText MenuDescription;
	FText TooltipDescription;
	FText Category;
	FText Keywords;
	FString FullSearchText;
};

struct FGraphContextMenuBuilder;

/**
 * A list of menu actions being gathered for a graph's action menu. Each entry holds one action (or a group that
 * acts together) and the root category it was added under.
 */
struct FGraphActionListBuilderBase
{
	/** One entry of the list: its actions and the category the entry was filed under. */
	struct ActionGroup
	{
		ENGINE_API ActionGroup(TSharedPtr<FEdGraphSchemaAction> InAction, FString InRootCategory = FString());
		ENGINE_API ActionGroup(const TArray<TSharedPtr<FEdGraphSchemaAction>>& InActions, FString InRootCategory = FString());

		const TArray<TSharedPtr<FEdGraphSchemaAction>>& GetActions() const { return Actions; }
		/** The root category followed by each action's own category, split at "|". */
		ENGINE_API void GetCategoryChain(TArray<FString>& OutCategories) const;

		TArray<TSharedPtr<FEdGraphSchemaAction>> Actions;
		FString RootCategory;
	};

	virtual ~FGraphActionListBuilderBase() = default;

	/** Adds an action; a null action is ignored. */
	ENGINE_API void AddAction(const TSharedPtr<FEdGraphSchemaAction>& NewAction, const FString& Category = FString());
	/** Adds several actions as one entry (they are performed together). */
	ENGINE_API void AddActionList(const TArray<TSharedPtr<FEdGraphSchemaAction>>& NewActions, const FString& Category = FString());
	/** Adds every entry of Other, in its order. */
	ENGINE_API void Append(FGraphActionListBuilderBase& Other);
	ENGINE_API int32 GetNumActions() const;
	ENGINE_API ActionGroup& GetAction(const int32 Index);
	/** The first action of the entry at Index; null when the index is out of range. */
	ENGINE_API TSharedPtr<FEdGraphSchemaAction> GetSchemaAction(const int32 Index) const;
	ENGINE_API virtual void Empty();

private:
	TArray<ActionGroup> Entries;
};

/** The list a schema fills for a graph's context menu, with what the menu was opened on. */
struct FGraphContextMenuBuilder : public FGraphActionListBuilderBase
{
	ENGINE_API explicit FGraphContextMenuBuilder(const UEdGraph* InGraph);

	/** The objects selected when the menu opened. */
	TArray<UObject*> SelectedObjects;
	/** The pin dragged off, if the menu was opened from one. */
	const UEdGraphPin* FromPin = nullptr;
	/** The graph the menu is for. */
	const UEdGraph* CurrentGraph = nullptr;
	/** Outer for the template nodes the actions carry. */
	UObject* OwnerOfTemporaries = nullptr;
};

/** The rules of one kind of graph: what connects to what, and what a default value means. */
class UEdGraphSchema : public UObject
{
	DECLARE_CLASS(UEdGraphSchema, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	/** Whether A and B may be linked, and what linking would break. The base allows any input-output pair on different nodes. */
	ENGINE_API virtual const FPinConnectionResponse CanCreateConnection(const UEdGraphPin* A, const UEdGraphPin* B) const;

	/**
	 * Links A and B as CanCreateConnection answers: breaks the links it says to break, then links, or
	 * hands over to the conversion or promotion hook; then tells both nodes. False when refused.
	 */
	ENGINE_API virtual bool TryCreateConnection(UEdGraphPin* A, UEdGraphPin* B) const;
	/** Puts a conversion node between A and B. The base has none. */
	virtual bool CreateAutomaticConversionNodeAndConnections(UEdGraphPin* A, UEdGraphPin* B) const { return false; }
	/** Promotes the type of a pin so that A and B can link. The base cannot. */
	virtual bool CreatePromotedConnection(UEdGraphPin* A, UEdGraphPin* B) const { return false; }

	ENGINE_API virtual void BreakNodeLinks(UEdGraphNode& TargetNode) const;
	ENGINE_API virtual void BreakPinLinks(UEdGraphPin& TargetPin, bool bSendsNodeNotifcation) const;
	ENGINE_API virtual void BreakSinglePinLink(UEdGraphPin* SourcePin, UEdGraphPin* TargetPin) const;

	/** Sets the pin's value when IsPinDefaultValid accepts it, then tells the node. */
	ENGINE_API virtual void TrySetDefaultValue(UEdGraphPin& Pin, const FString& NewDefaultValue, bool bMarkAsModified = true) const;
	ENGINE_API virtual void TrySetDefaultObject(UEdGraphPin& Pin, UObject* NewDefaultObject, bool bMarkAsModified = true) const;
	ENGINE_API virtual void TrySetDefaultText(UEdGraphPin& InPin, const FText& InNewDefaultText, bool bMarkAsModified = true) const;
	/** Why the value is not valid for the pin, or empty when it is. The base accepts everything. */
	virtual FString IsPinDefaultValid(const UEdGraphPin* Pin, const FString& NewDefaultValue, UObject* NewDefaultObject, const FText& InNewDefaultText) const { return FString(); }
	/** Why the pin's present value (text, object and text value together) is not valid, or empty when it is. */
	ENGINE_API FString IsCurrentPinDefaultValid(const UEdGraphPin* Pin) const;
	ENGINE_API virtual bool DoesDefaultValueMatchAutogenerated(const UEdGraphPin& InPin) const;
	ENGINE_API virtual void SetPinAutogeneratedDefaultValue(UEdGraphPin* Pin, const FString& NewValue) const;
	ENGINE_API virtual void SetPinAutogeneratedDefaultValueBasedOnType(UEdGraphPin* Pin) const;
	ENGINE_API virtual void ResetPinToAutogeneratedDefaultValue(UEdGraphPin* Pin, bool bCallModifyCallbacks = true) const;
	virtual bool ShouldHidePinDefaultValue(UEdGraphPin* Pin) const { return false; }

	ENGINE_API virtual EGraphType GetGraphType(const UEdGraph* TestEdGraph) const;
	/** Fills a new graph with the nodes every graph of the kind has (entry nodes and the like). */
	virtual void CreateDefaultNodesForGraph(UEdGraph& Graph) const {}
	ENGINE_API virtual FText GetPinDisplayName(const UEdGraphPin* Pin) const;
	/** Rebuilds a node's pins; the base calls the node's ReconstructNode. */
	ENGINE_API virtual void ReconstructNode(UEdGraphNode& TargetNode, bool bIsBatchRequest = false) const;
	virtual bool SafeDeleteNodeFromGraph(UEdGraph* Graph, UEdGraphNode* Node) const { return false; }
	virtual bool ShouldAlwaysPurgeOnModification() const { return true; }
	virtual bool IsCacheVisualizationOutOfDate(int32 InVisualizationCacheID) const { return false; }
	virtual int32 GetCurrentVisualizationCacheID() const { return 0; }

	/** Whether the types of the two pins can be wired together; the base has no types to compare. */
	virtual bool ArePinsCompatible(const UEdGraphPin* PinA, const UEdGraphPin* PinB, const UClass* CallingContext = nullptr, bool bIgnoreArray = false) const { return true; }
	/** Whether the pin stands for the object the node runs on. */
	virtual bool IsSelfPin(const UEdGraphPin& Pin) const { return false; }
	/** Whether pins of the category carry delegates. */
	virtual bool IsDelegateCategory(const FName Category) const { return false; }

	/** Adds the actions the graph's menu offers; the base offers none. */
	virtual void GetGraphContextActions(FGraphContextMenuBuilder& ContextMenuBuilder) const {}

	/** Sorts two pins into input and output; false (outputs untouched) unless one is an input and the other an output. */
	ENGINE_API static bool CategorizePinsByDirection(UEdGraphPin* PinA, UEdGraphPin* PinB, UEdGraphPin*& OutInputPin, UEdGraphPin*& OutOutputPin);
	ENGINE_API static bool CategorizePinsByDirection(const UEdGraphPin* PinA, const UEdGraphPin* PinB, const UEdGraphPin*& OutInputPin, const UEdGraphPin*& OutOutputPin);
};
