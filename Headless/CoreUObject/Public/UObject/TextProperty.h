#pragma once

#include "UObject/UnrealType.h"

/**
 * An FText. Exports as the engine writes texts: NSLOCTEXT("Namespace", "Key", "Source") for a
 * localizable text, INVTEXT("Source") for a culture-invariant one, and the quoted source string for
 * any other (made from a string).
 */
class COREUOBJECT_API FTextProperty : public TProperty<FText, FProperty>
{
	DECLARE_FIELD(FTextProperty, FProperty, CASTCLASS_FTextProperty)

public:
	using TProperty::TProperty;

	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope = nullptr) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
		int32 PortFlags, FOutputDevice* ErrorText) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override { return TEXT("FText"); }

	/** Whether two texts count as the same value (same source text and identity). */
	static bool Identical_Implementation(const FText& A, const FText& B, uint32 PortFlags);
};
