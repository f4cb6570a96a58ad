#include "Curves/CurveFloat.h"

#include "UObject/UnrealType.h"

IMPLEMENT_CLASS(UCurveBase)
IMPLEMENT_CLASS(UCurveFloat,
	UE_NATIVE_PROPERTY(FStructProperty, FloatCurve, CPF_None, FRichCurve::StaticStruct());
	UE_NATIVE_PROPERTY(FBoolProperty, bIsEventCurve, CPF_None, 0, (uint32)sizeof(bool), true);
)
IMPLEMENT_CLASS(UCurveVector,
	UE_NATIVE_PROPERTY(FStructProperty, FloatCurves, CPF_None, FRichCurve::StaticStruct())->SetArrayDim(3);
)
IMPLEMENT_CLASS(UCurveLinearColor,
	UE_NATIVE_PROPERTY(FStructProperty, FloatCurves, CPF_None, FRichCurve::StaticStruct())->SetArrayDim(4);
)

void UCurveBase::GetTimeRange(float& MinTime, float& MaxTime) const
{
	bool bAny = false;
	MinTime = 0.f;
	MaxTime = 0.f;
	for (const FRichCurve* Curve : GetCurves())
	{
		if (Curve->GetNumKeys() == 0)
		{
			continue;
		}
		float CurveMin = 0.f;
		float CurveMax = 0.f;
		Curve->GetTimeRange(CurveMin, CurveMax);
		MinTime = bAny ? FMath::Min(MinTime, CurveMin) : CurveMin;
		MaxTime = bAny ? FMath::Max(MaxTime, CurveMax) : CurveMax;
		bAny = true;
	}
}

void UCurveBase::ResetCurve()
{
	for (const FRichCurve* Curve : GetCurves())
	{
		const_cast<FRichCurve*>(Curve)->Reset();
	}
}

float UCurveFloat::GetFloatValue(float InTime) const
{
	return FloatCurve.Eval(InTime);
}

TArray<const FRichCurve*> UCurveFloat::GetCurves() const
{
	return {&FloatCurve};
}

FVector UCurveVector::GetVectorValue(float InTime) const
{
	return FVector(FloatCurves[0].Eval(InTime), FloatCurves[1].Eval(InTime), FloatCurves[2].Eval(InTime));
}

TArray<const FRichCurve*> UCurveVector::GetCurves() const
{
	return {&FloatCurves[0], &FloatCurves[1], &FloatCurves[2]};
}

FLinearColor UCurveLinearColor::GetLinearColorValue(float InTime) const
{
	return FLinearColor(FloatCurves[0].Eval(InTime), FloatCurves[1].Eval(InTime), FloatCurves[2].Eval(InTime), FloatCurves[3].Eval(InTime));
}

TArray<const FRichCurve*> UCurveLinearColor::GetCurves() const
{
	return {&FloatCurves[0], &FloatCurves[1], &FloatCurves[2], &FloatCurves[3]};
}
