#pragma once

#include "CoreMinimal.h"
#include "Curves/RichCurve.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

/** Base of curve assets. */
class UCurveBase : public UObject
{
	DECLARE_CLASS(UCurveBase, UObject, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	/** The time span covered by the keys of every channel. */
	ENGINE_API virtual void GetTimeRange(float& MinTime, float& MaxTime) const;
	ENGINE_API virtual TArray<const FRichCurve*> GetCurves() const { return {}; }
	/** Removes every key of every channel. */
	ENGINE_API void ResetCurve();
};

/** A curve of one float; the keys of a timeline's float and event tracks. */
class UCurveFloat : public UCurveBase
{
	DECLARE_CLASS(UCurveFloat, UCurveBase, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	FRichCurve FloatCurve;
	/** Set on the curve of an event track: its keys are times at which the event fires. */
	bool bIsEventCurve = false;

	ENGINE_API float GetFloatValue(float InTime) const;
	ENGINE_API virtual TArray<const FRichCurve*> GetCurves() const override;
};

/** Three float curves (X, Y, Z) making a vector. */
class UCurveVector : public UCurveBase
{
	DECLARE_CLASS(UCurveVector, UCurveBase, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	FRichCurve FloatCurves[3];

	ENGINE_API FVector GetVectorValue(float InTime) const;
	ENGINE_API virtual TArray<const FRichCurve*> GetCurves() const override;
};

/** Four float curves (R, G, B, A) making a linear colour. */
class UCurveLinearColor : public UCurveBase
{
	DECLARE_CLASS(UCurveLinearColor, UCurveBase, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	FRichCurve FloatCurves[4];

	ENGINE_API FLinearColor GetLinearColorValue(float InTime) const;
	ENGINE_API virtual TArray<const FRichCurve*> GetCurves() const override;
};
