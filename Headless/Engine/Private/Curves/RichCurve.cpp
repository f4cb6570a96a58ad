#include "Curves/RichCurve.h"

#include "Curves/CurveFloat.h"
#include "UObject/UnrealType.h"

IMPLEMENT_SCRIPT_STRUCT(FRichCurveKey, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FByteProperty, InterpMode, CPF_Edit, (UEnum*)nullptr);
	UE_NATIVE_PROPERTY(FByteProperty, TangentMode, CPF_Edit, (UEnum*)nullptr);
	UE_NATIVE_PROPERTY(FByteProperty, TangentWeightMode, CPF_Edit, (UEnum*)nullptr);
	UE_NATIVE_PROPERTY(FFloatProperty, Time, CPF_Edit);
	UE_NATIVE_PROPERTY(FFloatProperty, Value, CPF_Edit);
	UE_NATIVE_PROPERTY(FFloatProperty, ArriveTangent, CPF_Edit);
	UE_NATIVE_PROPERTY(FFloatProperty, ArriveTangentWeight, CPF_Edit);
	UE_NATIVE_PROPERTY(FFloatProperty, LeaveTangent, CPF_Edit);
	UE_NATIVE_PROPERTY(FFloatProperty, LeaveTangentWeight, CPF_Edit);
)

IMPLEMENT_SCRIPT_STRUCT(FRichCurve, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FByteProperty, PreInfinityExtrap, CPF_None, (UEnum*)nullptr);
	UE_NATIVE_PROPERTY(FByteProperty, PostInfinityExtrap, CPF_None, (UEnum*)nullptr);
	UE_NATIVE_PROPERTY(FFloatProperty, DefaultValue, CPF_Edit);
	{
		FArrayProperty* KeysProperty = UE_NATIVE_PROPERTY(FArrayProperty, Keys, CPF_Edit);
		KeysProperty->AddCppProperty(new FStructProperty(KeysProperty, KeysProperty->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_None,
			FRichCurveKey::StaticStruct()));
	}
)

FKeyHandle::FKeyHandle()
{
	// Handles only need to differ from each other within a process; zero is kept for "invalid".
	static uint32 LastKeyHandleIndex = 0;
	Index = ++LastKeyHandleIndex;
}

FRichCurve::FRichCurve()
	: DefaultValue(MAX_flt)
{
}

void FRichCurve::SyncHandles() const
{
	while (Handles.Num() < Keys.Num())
	{
		Handles.Add(FKeyHandle());
	}
	if (Handles.Num() > Keys.Num())
	{
		Handles.SetNum(Keys.Num());
	}
}

int32 FRichCurve::GetIndexSafe(FKeyHandle KeyHandle) const
{
	SyncHandles();
	return Handles.IndexOfByKey(KeyHandle);
}

FKeyHandle FRichCurve::AddKey(float InTime, float InValue, const bool bUnwindRotation, FKeyHandle KeyHandle)
{
	SyncHandles();
	int32 Index = 0;
	while (Index < Keys.Num() && Keys[Index].Time <= InTime)
	{
		++Index;
	}
	Keys.Insert(FRichCurveKey(InTime, InValue), Index);
	Handles.Insert(KeyHandle, Index);
	return KeyHandle;
}

FKeyHandle FRichCurve::UpdateOrAddKey(float InTime, float InValue, const bool bUnwindRotation, float KeyTimeTolerance)
{
	SyncHandles();
	for (int32 Index = 0; Index < Keys.Num(); ++Index)
	{
		if (FMath::Abs(Keys[Index].Time - InTime) <= KeyTimeTolerance)
		{
			Keys[Index].Value = InValue;
			return Handles[Index];
		}
	}
	return AddKey(InTime, InValue, bUnwindRotation);
}

void FRichCurve::DeleteKey(FKeyHandle KeyHandle)
{
	const int32 Index = GetIndexSafe(KeyHandle);
	if (Index != INDEX_NONE)
	{
		Keys.RemoveAt(Index);
		Handles.RemoveAt(Index);
	}
}

void FRichCurve::SetKeyInterpMode(FKeyHandle KeyHandle, ERichCurveInterpMode NewInterpMode)
{
	const int32 Index = GetIndexSafe(KeyHandle);
	if (Index != INDEX_NONE)
	{
		Keys[Index].InterpMode = NewInterpMode;
	}
}

void FRichCurve::Reset()
{
	Keys.Reset();
	Handles.Reset();
}

TArray<FKeyHandle> FRichCurve::GetKeyHandles() const
{
	SyncHandles();
	return Handles;
}

bool FRichCurve::IsKeyHandleValid(FKeyHandle KeyHandle) const
{
	return GetIndexSafe(KeyHandle) != INDEX_NONE;
}

FRichCurveKey& FRichCurve::GetKey(FKeyHandle KeyHandle)
{
	const int32 Index = GetIndexSafe(KeyHandle);
	check(Index != INDEX_NONE);
	return Keys[Index];
}

FRichCurveKey FRichCurve::GetKey(FKeyHandle KeyHandle) const
{
	const int32 Index = GetIndexSafe(KeyHandle);
	return Index != INDEX_NONE ? Keys[Index] : FRichCurveKey();
}

float FRichCurve::GetKeyTime(FKeyHandle KeyHandle) const
{
	return GetKey(KeyHandle).Time;
}

float FRichCurve::GetKeyValue(FKeyHandle KeyHandle) const
{
	return GetKey(KeyHandle).Value;
}

void FRichCurve::GetTimeRange(float& MinTime, float& MaxTime) const
{
	if (Keys.Num() == 0)
	{
		MinTime = 0.f;
		MaxTime = 0.f;
		return;
	}
	MinTime = Keys[0].Time;
	MaxTime = Keys.Last().Time;
}

void FRichCurve::GetValueRange(float& MinValue, float& MaxValue) const
{
	if (Keys.Num() == 0)
	{
		MinValue = MaxValue = 0.f;
		return;
	}
	MinValue = MaxValue = Keys[0].Value;
	for (const FRichCurveKey& Key : Keys)
	{
		MinValue = FMath::Min(MinValue, Key.Value);
		MaxValue = FMath::Max(MaxValue, Key.Value);
	}
}

float FRichCurve::Eval(float InTime, float InDefaultValue) const
{
	if (Keys.Num() == 0)
	{
		return DefaultValue == MAX_flt ? InDefaultValue : DefaultValue;
	}
	const FRichCurveKey& First = Keys[0];
	const FRichCurveKey& Last = Keys.Last();
	if (InTime <= First.Time)
	{
		return PreInfinityExtrap == RCCE_Linear && Keys.Num() > 1 && First.InterpMode != RCIM_Constant
			? First.Value - (First.Time - InTime) * (Keys[1].Value - First.Value) / FMath::Max(Keys[1].Time - First.Time, UE_KINDA_SMALL_NUMBER)
			: First.Value;
	}
	if (InTime >= Last.Time)
	{
		const FRichCurveKey& BeforeLast = Keys.Num() > 1 ? Keys[Keys.Num() - 2] : Last;
		return PostInfinityExtrap == RCCE_Linear && Keys.Num() > 1 && BeforeLast.InterpMode != RCIM_Constant
			? Last.Value + (InTime - Last.Time) * (Last.Value - BeforeLast.Value) / FMath::Max(Last.Time - BeforeLast.Time, UE_KINDA_SMALL_NUMBER)
			: Last.Value;
	}
	int32 Next = 1;
	while (Keys[Next].Time < InTime)
	{
		++Next;
	}
	const FRichCurveKey& A = Keys[Next - 1];
	const FRichCurveKey& B = Keys[Next];
	const float Span = B.Time - A.Time;
	if (Span <= 0.f || A.InterpMode == RCIM_Constant)
	{
		return A.Value;
	}
	const float Alpha = (InTime - A.Time) / Span;
	if (A.InterpMode == RCIM_Linear)
	{
		return FMath::Lerp(A.Value, B.Value, Alpha);
	}
	// A cubic segment is a Bezier whose inner points sit a third of the span along each key's tangent.
	const float P0 = A.Value;
	const float P1 = A.Value + A.LeaveTangent * Span / 3.f;
	const float P2 = B.Value - B.ArriveTangent * Span / 3.f;
	const float P3 = B.Value;
	const float Inv = 1.f - Alpha;
	return Inv * Inv * Inv * P0 + 3.f * Inv * Inv * Alpha * P1 + 3.f * Inv * Alpha * Alpha * P2 + Alpha * Alpha * Alpha * P3;
}
