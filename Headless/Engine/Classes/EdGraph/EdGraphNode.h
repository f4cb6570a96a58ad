#pragma once

#include "CoreMinimal.h"
#include "Misc/Guid.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"
#include "UObject/WeakObjectPtr.h"
#include "Templates/SubclassOf.h"

class UEdGraph;
class UEdGraphPin;
class UEdGraphSchema;
class UScriptStruct;
class FCompilerResultsLog;
struct FEdGraphPinType;

/** Which way data or execution flows through a pin. */
enum EEdGraphPinDirection : int
{
	EGPD_Input,
	EGPD_Output,
	EGPD_MAX,
};

/** How many values a pin carries. */
enum class EPinContainerType : uint8
{
	None,
	Array,
	Set,
	Map
};

/** The type of one end of a container pin: the value type of a map. */
struct FEdGraphTerminalType
{
	FName TerminalCategory;
	FName TerminalSubCategory;
	TWeakObjectPtr<UObject> TerminalSubCategoryObject;
	bool bTerminalIsConst = false;
	bool bTerminalIsWeakPointer = false;
	bool bTerminalIsUObjectWrapper = false;

	ENGINE_API static UScriptStruct* StaticStruct();

	ENGINE_API static FEdGraphTerminalType FromPinType(const FEdGraphPinType& PinType);

	bool operator==(const FEdGraphTerminalType& Other) const
	{
		return TerminalCategory == Other.TerminalCategory
			&& TerminalSubCategory == Other.TerminalSubCategory
			&& TerminalSubCategoryObject == Other.TerminalSubCategoryObject
			&& bTerminalIsConst == Other.bTerminalIsConst
			&& bTerminalIsWeakPointer == Other.bTerminalIsWeakPointer
			&& bTerminalIsUObjectWrapper == Other.bTerminalIsUObjectWrapper;
	}
	bool operator!=(const FEdGraphTerminalType& Other) const { return !(*this == Other); }
};

/** The optional parts of a pin's type and place, for UEdGraphNode::CreatePin. */
struct FCreatePinParams
{
	FCreatePinParams()
		: ContainerType(EPinContainerType::None)
		, bIsReference(false)
		, bIsConst(false)
		, Index(INDEX_NONE)
	{
	}

	ENGINE_API FCreatePinParams(const FEdGraphPinType& PinType);

	EPinContainerType ContainerType;
	bool bIsReference;
	bool bIsConst;
	/** Where the pin goes in the node's Pins; INDEX_NONE appends. */
	int32 Index;
	FEdGraphTerminalType ValueTerminalType;
};

namespace ENodeTitleType
{
	enum Type : int
	{
		/** The full title, possibly several lines. */
		FullTitle,
		/** One line, for lists such as the "My Blueprint" tab. */
		ListView,
		/** The title shown while renaming. */
		EditableTitle,
		/** The title of the node's entry in the action menu. */
		MenuTitle,
		MAX_TitleTypes,
	};
}

namespace ENodeAdvancedPins
{
	enum Type : uint8
	{
		/** No pin is marked advanced. */
		NoPins,
		/** Advanced pins are shown. */
		Shown,
		/** Advanced pins are hidden. */
		Hidden
	};
}

/** Whether a node takes part in compilation. */
enum class ENodeEnabledState : uint8
{
	Enabled,
	Disabled,
	DevelopmentOnly
};

/** One node of a graph: an object that owns its pins. */
class UEdGraphNode : public UObject
{
	DECLARE_CLASS(UEdGraphNode, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	ENGINE_API UEdGraphNode();
	/** Frees the pins; links from other nodes were broken by DestroyNode or BreakAllNodeLinks. */
	ENGINE_API virtual ~UEdGraphNode() override;

	/** The pins, in display order. The node allocates and frees them. */
	TArray<UEdGraphPin*> Pins;

	int32 NodePosX = 0;
	int32 NodePosY = 0;
	/** Size of a resizable node (comments); zero for nodes that size themselves. */
	int32 NodeWidth = 0;
	int32 NodeHeight = 0;

	ENodeAdvancedPins::Type AdvancedPinDisplay = ENodeAdvancedPins::NoPins;
	ENodeEnabledState EnabledState = ENodeEnabledState::Enabled;
	bool bUserSetEnabledState = false;

	bool bCanRenameNode = false;
	bool bCommentBubblePinned = false;
	bool bCommentBubbleVisible = false;
	bool bCommentBubbleMakeVisible = false;
	bool bHasCompilerMessage = false;

	FString NodeComment;
	/** Severity of the last compiler message (EMessageSeverity), or INDEX_NONE-like values when none. */
	int32 ErrorType = 0;
	FString ErrorMsg;

	FGuid NodeGuid;

	// Pins

	ENGINE_API UEdGraphPin* CreatePin(EEdGraphPinDirection Dir, const FEdGraphPinType& InPinType, const FName PinName, int32 Index = INDEX_NONE);
	ENGINE_API UEdGraphPin* CreatePin(EEdGraphPinDirection Dir, const FName PinCategory, const FName PinName, const FCreatePinParams& PinParams = FCreatePinParams());
	ENGINE_API UEdGraphPin* CreatePin(EEdGraphPinDirection Dir, const FName PinCategory, const FName PinSubCategory, const FName PinName, const FCreatePinParams& PinParams = FCreatePinParams());
	ENGINE_API UEdGraphPin* CreatePin(EEdGraphPinDirection Dir, const FName PinCategory, UObject* PinSubCategoryObject, const FName PinName, const FCreatePinParams& PinParams = FCreatePinParams());
	ENGINE_API UEdGraphPin* CreatePin(EEdGraphPinDirection Dir, const FName PinCategory, const FName PinSubCategory, UObject* PinSubCategoryObject, const FName PinName, const FCreatePinParams& PinParams = FCreatePinParams());

	/** The first pin named PinName (any direction when Direction is EGPD_MAX). */
	ENGINE_API UEdGraphPin* FindPin(const FName PinName, const EEdGraphPinDirection Direction = EGPD_MAX) const;
	UEdGraphPin* FindPin(const FString& PinName, const EEdGraphPinDirection Direction = EGPD_MAX) const { return FindPin(FName(*PinName), Direction); }
	UEdGraphPin* FindPin(const TCHAR* PinName, const EEdGraphPinDirection Direction = EGPD_MAX) const { return FindPin(FName(PinName), Direction); }
	/** FindPin that must succeed. */
	ENGINE_API UEdGraphPin* FindPinChecked(const FName PinName, const EEdGraphPinDirection Direction = EGPD_MAX) const;
	UEdGraphPin* FindPinChecked(const FString& PinName, const EEdGraphPinDirection Direction = EGPD_MAX) const { return FindPinChecked(FName(*PinName), Direction); }
	UEdGraphPin* FindPinChecked(const TCHAR* PinName, const EEdGraphPinDirection Direction = EGPD_MAX) const { return FindPinChecked(FName(PinName), Direction); }
	ENGINE_API UEdGraphPin* FindPinById(const FGuid PinId) const;
	ENGINE_API UEdGraphPin* FindPinByIdChecked(const FGuid PinId) const;
	/** Breaks the pin's links, takes it (and its sub-pins) off the node and frees it. False if the pin is not this node's. */
	ENGINE_API bool RemovePin(UEdGraphPin* Pin);
	ENGINE_API UEdGraphPin* GetPinAt(int32 Index) const;
	const TArray<UEdGraphPin*>& GetAllPins() const { return Pins; }
	/** Where a pin sits among the pins of its direction, or INDEX_NONE. */
	ENGINE_API int32 GetPinIndex(UEdGraphPin* Pin) const;

	/** Breaks every link of every pin, telling the nodes at the other ends. */
	ENGINE_API void BreakAllNodeLinks();

	// Identity and place

	ENGINE_API UEdGraph* GetGraph() const;
	ENGINE_API const UEdGraphSchema* GetSchema() const;
	ENGINE_API void CreateNewGuid();
	/** Rounds the position to the grid (16 units, the editor's default). */
	ENGINE_API void SnapToGrid(uint32 GridSnapSize);

	// Behaviour of a kind of node

	ENGINE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const;
	ENGINE_API virtual FText GetTooltipText() const;
	ENGINE_API virtual FString GetDocumentationLink() const { return FString(); }
	ENGINE_API virtual FText GetKeywords() const;
	ENGINE_API virtual void AllocateDefaultPins() {}
	/** Rebuilds the pins, keeping the links and values of pins that survive (same name and direction). */
	ENGINE_API virtual void ReconstructNode();
	ENGINE_API virtual void PostReconstructNode() {}
	/**
	 * The second half of a reconstruction, once the new pins are allocated: each new pin takes the links, value and
	 * split sub-pins of the old pin it replaces (same direction and persistent guid, else same name); old pins
	 * that still carry links or a value stay as orphans, the rest are freed.
	 */
	ENGINE_API void RestoreOldPins(TArray<UEdGraphPin*>& OldPins);
	ENGINE_API virtual void PostPlacedNewNode() {}
	ENGINE_API virtual void OnRenameNode(const FString& NewName) {}
	ENGINE_API virtual bool GetCanRenameNode() const { return bCanRenameNode; }
	ENGINE_API virtual bool CanUserDeleteNode() const { return true; }
	ENGINE_API virtual bool CanDuplicateNode() const { return true; }
	ENGINE_API virtual bool CanCreateUnderSpecifiedSchema(const UEdGraphSchema* Schema) const { return true; }
	/** Takes the node out of its graph: breaks its links and marks it as garbage. */
	ENGINE_API virtual void DestroyNode();
	ENGINE_API virtual void PinConnectionListChanged(UEdGraphPin* Pin) {}
	ENGINE_API virtual void PinDefaultValueChanged(UEdGraphPin* Pin) {}
	ENGINE_API virtual void PinTypeChanged(UEdGraphPin* Pin) {}
	ENGINE_API virtual void NodeConnectionListChanged() {}
	/** Links a node just placed from a dragged pin to the first compatible pin. */
	ENGINE_API virtual void AutowireNewNode(UEdGraphPin* FromPin);
	ENGINE_API virtual bool ShouldOverridePinNames() const { return false; }
	ENGINE_API virtual FText GetPinNameOverride(const UEdGraphPin& Pin) const { return FText(); }
	ENGINE_API virtual FText GetPinDisplayName(const UEdGraphPin* Pin) const;
	/** Whether an old pin with no match after a reconstruction is kept as an orphan. */
	ENGINE_API virtual bool ShouldKeepOrphanPin(const UEdGraphPin& OldPin) const;
	ENGINE_API virtual bool IsNodeEnabled() const { return EnabledState == ENodeEnabledState::Enabled; }
	ENGINE_API virtual bool IsDeprecated() const { return false; }

	ENGINE_API virtual void PostLoad() override;

	/** Reports what makes this node unfit to compile (a missing target, a bad type) into the compiler's log. */
	virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const {}

	/** Whether orphans are made at all when pins vanish in a reconstruction. */
	bool bDisableOrphanPinSaving = false;
};

#include "EdGraph/EdGraphPin.h"
