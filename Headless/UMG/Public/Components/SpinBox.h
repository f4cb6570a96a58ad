#pragma once

#include "CoreMinimal.h"
#include "Components/Widget.h"
#include "Types/SlateEnums.h"
#include "UObject/ScriptDelegates.h"

/** A number field the user can also drag to change. */
class USpinBox : public UWidget
{
	DECLARE_CLASS(USpinBox, UWidget, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	/** InValue (float) while the value changes. */
	struct FOnSpinBoxValueChangedEvent : FMulticastScriptDelegate {};
	/** InValue (float) and CommitMethod (ETextCommit::Type) when editing ends. */
	struct FOnSpinBoxValueCommittedEvent : FMulticastScriptDelegate {};
	/** No parameters: a drag of the value begins. */
	struct FOnSpinBoxBeginSliderMovement : FMulticastScriptDelegate {};

	UMG_API USpinBox();

	float Value = 0.0f;
	/** Limits of the value, each counting only while its override flag is set. */
	float MinValue = 0.0f;
	float MaxValue = 0.0f;
	float MinSliderValue = 0.0f;
	float MaxSliderValue = 0.0f;
	int32 MinFractionalDigits = 1;
	int32 MaxFractionalDigits = 6;
	bool bAlwaysUsesDeltaSnap = false;
	float Delta = 0.0f;
	float SliderExponent = 1.0f;
	float MinDesiredWidth = 0.0f;
	bool ClearKeyboardFocusOnCommit = false;
	bool SelectAllTextOnCommit = true;
	bool bOverride_MinValue = false;
	bool bOverride_MaxValue = false;
	bool bOverride_MinSliderValue = false;
	bool bOverride_MaxSliderValue = false;
	FOnSpinBoxValueChangedEvent OnValueChanged;
	FOnSpinBoxValueCommittedEvent OnValueCommitted;
	FOnSpinBoxBeginSliderMovement OnBeginSliderMovement;
	FOnSpinBoxValueChangedEvent OnEndSliderMovement;

	float GetValue() const { return Value; }
	/** Kept within the limits that are set. */
	UMG_API void SetValue(float NewValue);
	/** Sets the lower limit and turns it on. */
	UMG_API void SetMinValue(float NewValue);
	UMG_API void ClearMinValue();
	UMG_API void SetMaxValue(float NewValue);
	UMG_API void ClearMaxValue();
	float GetMinValue() const { return bOverride_MinValue ? MinValue : TNumericLimits<float>::Lowest(); }
	float GetMaxValue() const { return bOverride_MaxValue ? MaxValue : TNumericLimits<float>::Max(); }

	UMG_API virtual const FText GetPaletteCategory() override;
};
