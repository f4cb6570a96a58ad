#pragma once

#include "CoreMinimal.h"
#include "Curves/KeyHandle.h"

class UScriptStruct;

/** How the value moves from one key to the next. */
enum ERichCurveInterpMode : int
{
	RCIM_Linear,
	RCIM_Constant,
	RCIM_Cubic,
	RCIM_None
};

/** How a cubic key's tangents are chosen. */
enum ERichCurveTangentMode : int
{
	RCTM_Auto,
	RCTM_User,
	RCTM_Break,
	RCTM_None,
	RCTM_SmartAuto
};

enum ERichCurveTangentWeightMode : int
{
	RCTWM_WeightedNone,
	RCTWM_WeightedArrive,
	RCTWM_WeightedLeave,
	RCTWM_WeightedBoth
};

/** Values of a curve before its first key and after its last. */
enum ERichCurveExtrapolation : int
{
	RCCE_Cycle,
	RCCE_CycleWithOffset,
	RCCE_Oscillate,
	RCCE_Linear,
	RCCE_Constant,
	RCCE_None
};

/** One key of a curve. */
struct FRichCurveKey
{
	TEnumAsByte<ERichCurveInterpMode> InterpMode = RCIM_Linear;
	TEnumAsByte<ERichCurveTangentMode> TangentMode = RCTM_Auto;
	TEnumAsByte<ERichCurveTangentWeightMode> TangentWeightMode = RCTWM_WeightedNone;
	float Time = 0.f;
	float Value = 0.f;
	float ArriveTangent = 0.f;
	float ArriveTangentWeight = 0.f;
	float LeaveTangent = 0.f;
	float LeaveTangentWeight = 0.f;

	FRichCurveKey() = default;
	FRichCurveKey(float InTime, float InValue) : Time(InTime), Value(InValue) {}

	ENGINE_API static UScriptStruct* StaticStruct();
	bool operator==(const FRichCurveKey& Other) const
	{
		return Time == Other.Time && Value == Other.Value && InterpMode == Other.InterpMode && TangentMode == Other.TangentMode
			&& ArriveTangent == Other.ArriveTangent && LeaveTangent == Other.LeaveTangent;
	}
};

/** A curve of float keys, kept sorted by time, evaluated with each key's interpolation. */
struct FRichCurve
{
	ENGINE_API FRichCurve();

	TEnumAsByte<ERichCurveExtrapolation> PreInfinityExtrap = RCCE_Constant;
	TEnumAsByte<ERichCurveExtrapolation> PostInfinityExtrap = RCCE_Constant;
	/** The value of a curve with no keys; MAX_flt when unset. */
	float DefaultValue;
	TArray<FRichCurveKey> Keys;

	ENGINE_API static UScriptStruct* StaticStruct();

	/**
	 * Adds a key at InTime (kept in time order) and returns its handle. A key already at that time is not
	 * replaced: both stay, as in the engine; use UpdateOrAddKey to replace.
	 */
	ENGINE_API FKeyHandle AddKey(float InTime, float InValue, const bool bUnwindRotation = false, FKeyHandle KeyHandle = FKeyHandle());
	/** Sets the value of the key at InTime (within KeyTimeTolerance), or adds one. */
	ENGINE_API FKeyHandle UpdateOrAddKey(float InTime, float InValue, const bool bUnwindRotation = false, float KeyTimeTolerance = 1.e-4f);
	ENGINE_API void DeleteKey(FKeyHandle KeyHandle);
	ENGINE_API void SetKeyInterpMode(FKeyHandle KeyHandle, ERichCurveInterpMode NewInterpMode);
	/** Removes every key. */
	ENGINE_API void Reset();

	int32 GetNumKeys() const { return Keys.Num(); }
	const TArray<FRichCurveKey>& GetConstRefOfKeys() const { return Keys; }
	ENGINE_API TArray<FKeyHandle> GetKeyHandles() const;
	ENGINE_API bool IsKeyHandleValid(FKeyHandle KeyHandle) const;
	ENGINE_API FRichCurveKey& GetKey(FKeyHandle KeyHandle);
	ENGINE_API FRichCurveKey GetKey(FKeyHandle KeyHandle) const;
	ENGINE_API float GetKeyTime(FKeyHandle KeyHandle) const;
	ENGINE_API float GetKeyValue(FKeyHandle KeyHandle) const;
	ENGINE_API void GetTimeRange(float& MinTime, float& MaxTime) const;
	ENGINE_API void GetValueRange(float& MinValue, float& MaxValue) const;

	/** The curve's value at InTime; InDefaultValue when there are no keys and no default. */
	ENGINE_API float Eval(float InTime, float InDefaultValue = 0.f) const;

	bool operator==(const FRichCurve& Other) const { return Keys == Other.Keys && DefaultValue == Other.DefaultValue; }

private:
	int32 GetIndexSafe(FKeyHandle KeyHandle) const;
	/** Handles in the order of Keys; rebuilt lazily after a load, when only the keys were read. */
	mutable TArray<FKeyHandle> Handles;
	void SyncHandles() const;
};
