#include "EdGraph/EdGraphPin.h"
#include "EdGraph/EdGraphNode.h"
#include "UObject/Class.h"
#include "UObject/EnumProperty.h"
#include "UObject/UnrealType.h"
#include "EngineReflection.h"

// The pin type structs are USTRUCTs in the engine, so anything holding one (a Blueprint's variables, a
// function entry's user pins) saves and loads through the generic property text.

using namespace UE::Engine::Private;

IMPLEMENT_NATIVE_ENUM(EPinContainerType, TEXT("/Script/Engine"),
	TArray<TPair<FName, int64>> Entries;
	Entries.Emplace(TEXT("EPinContainerType::None"), 0);
	Entries.Emplace(TEXT("EPinContainerType::Array"), 1);
	Entries.Emplace(TEXT("EPinContainerType::Set"), 2);
	Entries.Emplace(TEXT("EPinContainerType::Map"), 3);
	Enum->SetEnums(Entries, UEnum::ECppForm::EnumClass, EEnumFlags::None, true);
)

IMPLEMENT_SCRIPT_STRUCT(FSimpleMemberReference, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FObjectProperty, MemberParent, CPF_TObjectPtr, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FNameProperty, MemberName, CPF_None);
	UE_NATIVE_PROPERTY(FStructProperty, MemberGuid, CPF_None, TBaseStructure<FGuid>::Get());
)

IMPLEMENT_SCRIPT_STRUCT(FEdGraphTerminalType, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FNameProperty, TerminalCategory, CPF_None);
	UE_NATIVE_PROPERTY(FNameProperty, TerminalSubCategory, CPF_None);
	UE_NATIVE_PROPERTY(FWeakObjectProperty, TerminalSubCategoryObject, CPF_None, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FBoolProperty, bTerminalIsConst, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bTerminalIsWeakPointer, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bTerminalIsUObjectWrapper, CPF_None, 0, (uint32)sizeof(bool), true);
)

IMPLEMENT_SCRIPT_STRUCT(FEdGraphPinType, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FNameProperty, PinCategory, CPF_None);
	UE_NATIVE_PROPERTY(FNameProperty, PinSubCategory, CPF_None);
	UE_NATIVE_PROPERTY(FWeakObjectProperty, PinSubCategoryObject, CPF_None, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FStructProperty, PinSubCategoryMemberReference, CPF_None, FSimpleMemberReference::StaticStruct());
	UE_NATIVE_PROPERTY(FStructProperty, PinValueType, CPF_None, FEdGraphTerminalType::StaticStruct());
	WithEnumUnderlyingByte(UE_NATIVE_PROPERTY(FEnumProperty, ContainerType, CPF_None, StaticEnum<EPinContainerType>()));
	// One-bit members have no address; the bit is found by setting it on a blank value.
	AddNativeBitfield<FEdGraphPinType>(Struct, TEXT("bIsReference"), [](FEdGraphPinType& Value) { Value.bIsReference = true; });
	AddNativeBitfield<FEdGraphPinType>(Struct, TEXT("bIsConst"), [](FEdGraphPinType& Value) { Value.bIsConst = true; });
	AddNativeBitfield<FEdGraphPinType>(Struct, TEXT("bIsWeakPointer"), [](FEdGraphPinType& Value) { Value.bIsWeakPointer = true; });
	AddNativeBitfield<FEdGraphPinType>(Struct, TEXT("bIsUObjectWrapper"), [](FEdGraphPinType& Value) { Value.bIsUObjectWrapper = true; });
	AddNativeBitfield<FEdGraphPinType>(Struct, TEXT("bSerializeAsSinglePrecisionFloat"), [](FEdGraphPinType& Value) { Value.bSerializeAsSinglePrecisionFloat = true; });
)
