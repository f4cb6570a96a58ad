#include "K2Node_CastByteToEnum.h"
#include "K2Node_ConvertAsset.h"
#include "K2Node_GetEnumeratorName.h"
#include "K2Node_GetEnumeratorNameAsString.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/Class.h"
#include "UObject/UnrealType.h"

// The nodes the K2 schema places between two pins whose types meet only through a conversion that is not a plain
// function call: enum entries to names and strings, bytes to enums, soft references to hard ones and back.

#define LOCTEXT_NAMESPACE "K2Node"

IMPLEMENT_CLASS(UK2Node_GetEnumeratorName)
IMPLEMENT_CLASS(UK2Node_GetEnumeratorNameAsString)
IMPLEMENT_CLASS(UK2Node_CastByteToEnum,
	UE_NATIVE_PROPERTY(FObjectProperty, Enum, CPF_TObjectPtr, UEnum::StaticClass());
	UE_NATIVE_PROPERTY(FBoolProperty, bSafe, CPF_None, 0, (uint32)sizeof(bool), true);
)
IMPLEMENT_CLASS(UK2Node_ConvertAsset)

namespace
{
	/** The bullet compact conversion nodes show instead of a title. */
	FText ConversionBullet()
	{
		return FText::FromString(FString(TEXT("\u2022")));
	}
}

//////////////////////////////////////////////////////////////////////////
// UK2Node_GetEnumeratorName

const FName UK2Node_GetEnumeratorName::EnumeratorPinName(TEXT("Enumerator"));

UK2Node_GetEnumeratorName::UK2Node_GetEnumeratorName()
{
}

void UK2Node_GetEnumeratorName::AllocateDefaultPins()
{
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Byte, EnumeratorPinName);
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Name, UEdGraphSchema_K2::PN_ReturnValue);
}

FText UK2Node_GetEnumeratorName::GetTooltipText() const
{
	return LOCTEXT("GetEnumeratorName_Tooltip", "The name of the enum entry the value holds");
}

FText UK2Node_GetEnumeratorName::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return LOCTEXT("GetNode_Title", "Enum to Name");
}

FText UK2Node_GetEnumeratorName::GetCompactNodeTitle() const
{
	return ConversionBullet();
}

FText UK2Node_GetEnumeratorName::GetMenuCategory() const
{
	return LOCTEXT("NameCategory", "Utilities|Name");
}

FName UK2Node_GetEnumeratorName::GetFunctionName() const
{
	return TEXT("GetEnumeratorName");
}

UEnum* UK2Node_GetEnumeratorName::GetConnectedEnum() const
{
	const UEdGraphPin* InputPin = FindPin(EnumeratorPinName);
	const UEdGraphPin* EnumPin = (InputPin && InputPin->LinkedTo.Num() > 0) ? InputPin->LinkedTo[0] : nullptr;
	return EnumPin ? Cast<UEnum>(EnumPin->PinType.PinSubCategoryObject.Get()) : nullptr;
}

bool UK2Node_GetEnumeratorName::IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const
{
	// Any byte would be accepted by the pin's type; only an enum has entry names to give.
	if (MyPin && MyPin == FindPin(EnumeratorPinName) && OtherPin && OtherPin->PinType.PinCategory == UEdGraphSchema_K2::PC_Byte
		&& !Cast<UEnum>(OtherPin->PinType.PinSubCategoryObject.Get()))
	{
		OutReason = LOCTEXT("GetNumEnumEntries_NotEnum_Msg", "Input is not an Enum.").ToString();
		return true;
	}
	return false;
}

void UK2Node_GetEnumeratorName::NotifyPinConnectionListChanged(UEdGraphPin* Pin)
{
	Super::NotifyPinConnectionListChanged(Pin);
	// The input shows the enum wired into it, so its default and its type read as that enum's.
	if (Pin && Pin->PinName == EnumeratorPinName && Pin->Direction == EGPD_Input)
	{
		Pin->PinType.PinSubCategoryObject = GetConnectedEnum();
	}
}

void UK2Node_GetEnumeratorName::PostReconstructNode()
{
	if (UEdGraphPin* EnumPin = FindPin(EnumeratorPinName))
	{
		EnumPin->PinType.PinSubCategoryObject = GetConnectedEnum();
	}
	Super::PostReconstructNode();
}

void UK2Node_GetEnumeratorName::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);
	// A node whose result goes nowhere is not worth a complaint.
	const UEdGraphPin* OutputPin = FindPin(UEdGraphSchema_K2::PN_ReturnValue);
	if (OutputPin && OutputPin->LinkedTo.Num() > 0 && !GetConnectedEnum())
	{
		MessageLog.Error(*LOCTEXT("GetNumEnumEntries_NoIntput_Error", "@@ Must have non-default Enum input").ToString(), this);
	}
}

//////////////////////////////////////////////////////////////////////////
// UK2Node_GetEnumeratorNameAsString

UK2Node_GetEnumeratorNameAsString::UK2Node_GetEnumeratorNameAsString()
{
}

void UK2Node_GetEnumeratorNameAsString::AllocateDefaultPins()
{
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Byte, EnumeratorPinName);
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_String, UEdGraphSchema_K2::PN_ReturnValue);
}

FText UK2Node_GetEnumeratorNameAsString::GetTooltipText() const
{
	return LOCTEXT("GetEnumeratorNameAsString_Tooltip", "The display name of the enum entry the value holds");
}

FText UK2Node_GetEnumeratorNameAsString::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return LOCTEXT("GetEnumeratorNameAsString_Title", "Enum to String");
}

FText UK2Node_GetEnumeratorNameAsString::GetMenuCategory() const
{
	return LOCTEXT("StringCategory", "Utilities|String");
}

FName UK2Node_GetEnumeratorNameAsString::GetFunctionName() const
{
	return TEXT("GetEnumeratorUserFriendlyName");
}

//////////////////////////////////////////////////////////////////////////
// UK2Node_CastByteToEnum

const FName UK2Node_CastByteToEnum::ByteInputPinName(TEXT("Byte"));

UK2Node_CastByteToEnum::UK2Node_CastByteToEnum()
{
}

void UK2Node_CastByteToEnum::AllocateDefaultPins()
{
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Byte, ByteInputPinName);
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Byte, Enum.Get(), UEdGraphSchema_K2::PN_ReturnValue);
}

FText UK2Node_CastByteToEnum::GetTooltipText() const
{
	if (!Enum)
	{
		return LOCTEXT("CastByteToEnum_NullTooltip", "Byte to Enum (bad enum)");
	}
	return FText::Format(LOCTEXT("CastByteToEnum_Tooltip", "Byte to Enum {0}"), FText::FromName(Enum->GetFName()));
}

FText UK2Node_CastByteToEnum::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return GetTooltipText();
}

FText UK2Node_CastByteToEnum::GetCompactNodeTitle() const
{
	return ConversionBullet();
}

FText UK2Node_CastByteToEnum::GetMenuCategory() const
{
	return LOCTEXT("EnumCategory", "Utilities|Enum");
}

FName UK2Node_CastByteToEnum::GetFunctionName() const
{
	return TEXT("GetValidValue");
}

bool UK2Node_CastByteToEnum::IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const
{
	// Only this node's own enum may meet it; a byte of another enum would need converting first.
	const UEnum* OtherEnum = OtherPin ? Cast<UEnum>(OtherPin->PinType.PinSubCategoryObject.Get()) : nullptr;
	return OtherEnum && OtherEnum != Enum;
}

void UK2Node_CastByteToEnum::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);
	if (!Enum)
	{
		MessageLog.Error(*LOCTEXT("CastByteToNullEnumError", "Undefined Enum in @@").ToString(), this);
	}
}

//////////////////////////////////////////////////////////////////////////
// UK2Node_ConvertAsset

namespace
{
	const FName ConvertAssetInputPinName(TEXT("Input"));
	const FName ConvertAssetOutputPinName(TEXT("Output"));

	bool IsReferenceCategory(FName Category)
	{
		return Category == UEdGraphSchema_K2::PC_SoftObject || Category == UEdGraphSchema_K2::PC_SoftClass
			|| Category == UEdGraphSchema_K2::PC_Object || Category == UEdGraphSchema_K2::PC_Class;
	}
}

UK2Node_ConvertAsset::UK2Node_ConvertAsset()
{
}

void UK2Node_ConvertAsset::AllocateDefaultPins()
{
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Wildcard, ConvertAssetInputPinName);
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Wildcard, ConvertAssetOutputPinName);
}

UEdGraphPin* UK2Node_ConvertAsset::GetInputPin() const
{
	return FindPin(ConvertAssetInputPinName);
}

UEdGraphPin* UK2Node_ConvertAsset::GetOutputPin() const
{
	return FindPin(ConvertAssetOutputPinName);
}

UClass* UK2Node_ConvertAsset::GetTargetClass() const
{
	const UEdGraphPin* InputPin = GetInputPin();
	const UEdGraphPin* Source = (InputPin && InputPin->LinkedTo.Num() > 0) ? InputPin->LinkedTo[0] : nullptr;
	if (!Source)
	{
		return nullptr;
	}
	if (Source->PinType.PinSubCategory == UEdGraphSchema_K2::PSC_Self)
	{
		return GetBlueprintClassFromNode();
	}
	return Cast<UClass>(Source->PinType.PinSubCategoryObject.Get());
}

bool UK2Node_ConvertAsset::IsClassType() const
{
	const UEdGraphPin* InputPin = GetInputPin();
	const UEdGraphPin* Source = (InputPin && InputPin->LinkedTo.Num() > 0) ? InputPin->LinkedTo[0] : nullptr;
	return Source && (Source->PinType.PinCategory == UEdGraphSchema_K2::PC_SoftClass || Source->PinType.PinCategory == UEdGraphSchema_K2::PC_Class);
}

bool UK2Node_ConvertAsset::IsConvertToSoft() const
{
	const UEdGraphPin* InputPin = GetInputPin();
	const UEdGraphPin* Source = (InputPin && InputPin->LinkedTo.Num() > 0) ? InputPin->LinkedTo[0] : nullptr;
	return Source && (Source->PinType.PinCategory == UEdGraphSchema_K2::PC_Class || Source->PinType.PinCategory == UEdGraphSchema_K2::PC_Object);
}

bool UK2Node_ConvertAsset::IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const
{
	// The wildcard input takes references only, soft or hard.
	const UEdGraphPin* InputPin = GetInputPin();
	return InputPin && OtherPin && MyPin == InputPin && MyPin->PinType.PinCategory == UEdGraphSchema_K2::PC_Wildcard
		&& !IsReferenceCategory(OtherPin->PinType.PinCategory);
}

void UK2Node_ConvertAsset::RefreshPinTypes()
{
	UEdGraphPin* InputPin = GetInputPin();
	UEdGraphPin* OutputPin = GetOutputPin();
	if (!InputPin || !OutputPin)
	{
		return;
	}
	const bool bConnected = InputPin->LinkedTo.Num() > 0;
	UClass* TargetClass = bConnected ? GetTargetClass() : nullptr;
	const bool bClass = bConnected && IsClassType();
	FName InputCategory = UEdGraphSchema_K2::PC_Wildcard;
	FName OutputCategory = UEdGraphSchema_K2::PC_Wildcard;
	if (bConnected)
	{
		const FName Hard = bClass ? UEdGraphSchema_K2::PC_Class : UEdGraphSchema_K2::PC_Object;
		const FName Soft = bClass ? UEdGraphSchema_K2::PC_SoftClass : UEdGraphSchema_K2::PC_SoftObject;
		InputCategory = IsConvertToSoft() ? Hard : Soft;
		OutputCategory = IsConvertToSoft() ? Soft : Hard;
	}
	auto Retype = [TargetClass](UEdGraphPin* Pin, FName Category)
	{
		Pin->PinType.ResetToDefaults();
		Pin->PinType.PinCategory = Category;
		Pin->PinType.PinSubCategoryObject = TargetClass;
	};
	Retype(InputPin, InputCategory);
	Retype(OutputPin, OutputCategory);
	PinTypeChanged(InputPin);
	PinTypeChanged(OutputPin);

	// Links the new output type cannot carry are broken rather than left wrong.
	if (OutputPin->LinkedTo.Num() > 0)
	{
		const UEdGraphSchema_K2* Schema = GetK2Schema();
		const UBlueprint* Blueprint = GetBlueprint();
		const UClass* CallingContext = Blueprint ? (Blueprint->GeneratedClass ? Blueprint->GeneratedClass.Get() : Blueprint->ParentClass.Get()) : nullptr;
		const TArray<UEdGraphPin*> Linked = OutputPin->LinkedTo;
		for (UEdGraphPin* Target : Linked)
		{
			if (Target && !Schema->ArePinsCompatible(OutputPin, Target, CallingContext))
			{
				OutputPin->BreakLinkTo(Target);
			}
		}
	}
}

void UK2Node_ConvertAsset::NotifyPinConnectionListChanged(UEdGraphPin* Pin)
{
	Super::NotifyPinConnectionListChanged(Pin);
	if (Pin && Pin->PinName == ConvertAssetInputPinName)
	{
		RefreshPinTypes();
		if (UEdGraph* Graph = GetGraph())
		{
			Graph->NotifyGraphChanged();
		}
	}
}

void UK2Node_ConvertAsset::PostReconstructNode()
{
	RefreshPinTypes();
	Super::PostReconstructNode();
}

FText UK2Node_ConvertAsset::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	if (IsConvertToSoft())
	{
		return LOCTEXT("MakeSoftTitle", "Make Soft Reference");
	}
	return LOCTEXT("UK2Node_ConvertAssetGetNodeTitle", "Resolve Soft Reference");
}

FText UK2Node_ConvertAsset::GetTooltipText() const
{
	if (IsConvertToSoft())
	{
		return LOCTEXT("MakeSoftTooltip", "Makes a soft reference to the class or object wired in.");
	}
	const UEdGraphPin* InputPin = GetInputPin();
	if (InputPin && InputPin->LinkedTo.Num() > 0)
	{
		return LOCTEXT("ResolveSoftTooltip", "The class or object a soft reference points to, or none when it is not loaded.");
	}
	return LOCTEXT("UnknownTypeTooltip", "Resolves a soft reference or makes one from a hard reference, depending on what is wired in.");
}

FText UK2Node_ConvertAsset::GetKeywords() const
{
	// The node's older names, still what people search for.
	return LOCTEXT("UK2Node_ConvertAssetGetKeywords", "Resolve Asset ID Convert Soft");
}

FText UK2Node_ConvertAsset::GetCompactNodeTitle() const
{
	return ConversionBullet();
}

FText UK2Node_ConvertAsset::GetMenuCategory() const
{
	return LOCTEXT("UtilitiesCategory", "Utilities");
}

#undef LOCTEXT_NAMESPACE
