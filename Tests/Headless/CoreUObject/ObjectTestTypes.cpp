#include "ObjectTestTypes.h"

IMPLEMENT_CLASS(UTestReflectedObject,
	UE_NATIVE_PROPERTY(FIntProperty, Count, CPF_Edit | CPF_BlueprintVisible);
	UE_NATIVE_PROPERTY(FStrProperty, Label, CPF_Edit | CPF_BlueprintVisible);
	UE_NATIVE_PROPERTY(FBoolProperty, bEnabled, CPF_Edit | CPF_BlueprintVisible | CPF_BlueprintReadOnly, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FFloatProperty, Weight, CPF_Edit);
	UE_NATIVE_PROPERTY(FDoubleProperty, Precise, CPF_Edit);
	UE_NATIVE_PROPERTY(FNameProperty, Tag, CPF_Edit);
	UE_NATIVE_PROPERTY(FArrayProperty, Notes, CPF_Edit)->AddCppProperty(new FStrProperty(Class->FindPropertyByName(TEXT("Notes")), TEXT("Notes"), RF_Public));
	UE_NATIVE_PROPERTY(FObjectProperty, Target, CPF_Edit | CPF_TObjectPtr, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FStructProperty, Location, CPF_Edit | CPF_BlueprintVisible, TBaseStructure<FVector>::Get());
	UE_NATIVE_PROPERTY(FInt64Property, BigNumber, CPF_None);
	UE_NATIVE_PROPERTY(FByteProperty, Mode, CPF_None, (UEnum*)nullptr);
	Class->SetMetaData(TEXT("DisplayName"), TEXT("Reflected Test Object"));
)

IMPLEMENT_CLASS(UTestReflectedChild,
	UE_NATIVE_PROPERTY(FStrProperty, ChildOnly, CPF_Edit);
)

IMPLEMENT_CLASS(UTestAbstractObject)

IMPLEMENT_CLASS(UTestLifetimeObject,
	UE_NATIVE_PROPERTY(FObjectProperty, Other, CPF_None, UObject::StaticClass());
)

IMPLEMENT_CLASS(UTestInterface)

IMPLEMENT_CLASS(UTestOwnerObject,
	UE_NATIVE_PROPERTY(FObjectProperty, Component, CPF_InstancedReference | CPF_TObjectPtr, UTestReflectedObject::StaticClass());
	Class->Interfaces.Emplace(UTestInterface::StaticClass(), VTABLE_OFFSET(ThisClass, ITestInterface), false);
)
