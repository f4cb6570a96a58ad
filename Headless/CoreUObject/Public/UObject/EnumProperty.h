#pragma once

#include "UObject/UnrealType.h"

/** An enum class value stored in its underlying integer (UnderlyingProp). Exports the entry's short name. */
class COREUOBJECT_API FEnumProperty : public FProperty
{
	DECLARE_FIELD(FEnumProperty, FProperty, CASTCLASS_FEnumProperty)

public:
	FEnumProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FEnumProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, UEnum* InEnum);
	FEnumProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, UEnum* InEnum);
	virtual ~FEnumProperty() override;

	/** Sets the underlying integer property (an FByteProperty, FIntProperty...), owned by this one. */
	virtual void AddCppProperty(FProperty* Inner);

	FNumericProperty* GetUnderlyingProperty() const { return UnderlyingProp; }
	UEnum* GetEnum() const { return Enum; }
	void SetEnum(UEnum* InEnum) { Enum = InEnum; }

	virtual int32 GetMinAlignment() const override;
	virtual void LinkInternal() override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual FString GetCPPMacroType(FString& ExtendedTypeText) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual void CopyValuesInternal(void* Dest, const void* Src, int32 Count) const override;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override;

private:
	FNumericProperty* UnderlyingProp = nullptr;
	UEnum* Enum = nullptr;
};
