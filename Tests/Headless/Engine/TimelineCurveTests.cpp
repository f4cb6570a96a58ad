#include <gtest/gtest.h>

#include "CoreMinimal.h"
#include "Curves/CurveFloat.h"
#include "Curves/RichCurve.h"
#include "Engine/Blueprint.h"
#include "Engine/TimelineTemplate.h"
#include "GameFramework/Actor.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "Misc/PackageName.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

TEST(RichCurve, EvaluatesEachSegmentWithItsKeysMode)
{
	FRichCurve Curve;
	EXPECT_FLOAT_EQ(Curve.Eval(1.f, 7.f), 7.f);
	Curve.DefaultValue = 3.f;
	EXPECT_FLOAT_EQ(Curve.Eval(1.f, 7.f), 3.f);

	// Keys arrive out of order; the curve keeps them sorted by time.
	const FKeyHandle Middle = Curve.AddKey(1.f, 10.f);
	const FKeyHandle First = Curve.AddKey(0.f, 0.f);
	const FKeyHandle Last = Curve.AddKey(2.f, 0.f);
	ASSERT_EQ(Curve.GetNumKeys(), 3);
	EXPECT_FLOAT_EQ(Curve.Keys[0].Time, 0.f);
	EXPECT_FLOAT_EQ(Curve.GetKeyValue(Middle), 10.f);
	EXPECT_FLOAT_EQ(Curve.GetKeyTime(Last), 2.f);

	struct FCase { float Time; float Expected; };
	for (const FCase& Case : {FCase{-1.f, 0.f}, FCase{0.25f, 2.5f}, FCase{1.f, 10.f}, FCase{1.5f, 5.f}, FCase{3.f, 0.f}})
	{
		EXPECT_FLOAT_EQ(Curve.Eval(Case.Time), Case.Expected) << Case.Time;
	}
	Curve.SetKeyInterpMode(First, RCIM_Constant);
	EXPECT_FLOAT_EQ(Curve.Eval(0.9f), 0.f);
	// A cubic segment with flat tangents eases: half way is half the value, a quarter is less than linear.
	Curve.SetKeyInterpMode(First, RCIM_Cubic);
	EXPECT_FLOAT_EQ(Curve.Eval(0.5f), 5.f);
	EXPECT_LT(Curve.Eval(0.25f), 2.5f);
	Curve.PostInfinityExtrap = RCCE_Linear;
	EXPECT_FLOAT_EQ(Curve.Eval(3.f), -10.f);

	float MinValue = 0.f;
	float MaxValue = 0.f;
	Curve.GetValueRange(MinValue, MaxValue);
	EXPECT_FLOAT_EQ(MaxValue, 10.f);
}

TEST(RichCurve, HandlesFollowTheirKeysThroughEdits)
{
	FRichCurve Curve;
	const FKeyHandle A = Curve.AddKey(0.f, 1.f);
	const FKeyHandle B = Curve.AddKey(1.f, 2.f);
	EXPECT_NE(A, B);
	EXPECT_EQ(Curve.UpdateOrAddKey(1.00001f, 5.f), B);
	EXPECT_FLOAT_EQ(Curve.GetKeyValue(B), 5.f);
	EXPECT_EQ(Curve.GetNumKeys(), 2);
	Curve.DeleteKey(A);
	EXPECT_FALSE(Curve.IsKeyHandleValid(A));
	EXPECT_TRUE(Curve.IsKeyHandleValid(B));
	EXPECT_FLOAT_EQ(Curve.Keys[0].Value, 5.f);
	Curve.Reset();
	EXPECT_EQ(Curve.GetNumKeys(), 0);
	EXPECT_FALSE(Curve.IsKeyHandleValid(B));
}

TEST(TimelineTemplate, TrackNamesDriveTheGeneratedNames)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Timelines/BP_Lift"));
	UBlueprint* Blueprint = NewObject<UBlueprint>(Package, TEXT("BP_Lift"));
	UTimelineTemplate* Timeline = NewObject<UTimelineTemplate>(Blueprint, *UTimelineTemplate::TimelineVariableNameToTemplateName(TEXT("Rise")));
	Timeline->TimelineGuid = FGuid(1, 2, 3, 4);
	EXPECT_EQ(Timeline->GetVariableName(), FName(TEXT("Rise")));

	FTTFloatTrack Height;
	Height.SetTrackName(TEXT("Height"), Timeline);
	EXPECT_EQ(Height.PropertyName, Timeline->GetTrackPropertyName(TEXT("Height")));
	EXPECT_EQ(Height.PropertyName.ToString(), FString(TEXT("Rise_Height_00000001000000020000000300000004")));
	Timeline->FloatTracks.Add(Height);
	Timeline->AddDisplayTrack({FTTTrackId::FloatInterp, 0});

	FTTEventTrack Ding;
	Ding.SetTrackName(TEXT("Ding"), Timeline);
	EXPECT_EQ(Ding.FunctionName.ToString(), FString(TEXT("Rise__Ding__EventFunc")));
	Timeline->EventTracks.Add(Ding);
	Timeline->AddDisplayTrack({FTTTrackId::Event, 0});
	EXPECT_EQ(Timeline->GetEventTrackFunctionName(0), Ding.FunctionName);
	EXPECT_EQ(Timeline->GetEventTrackFunctionName(1), NAME_None);

	EXPECT_FALSE(Timeline->IsNewTrackNameValid(TEXT("height")));
	EXPECT_FALSE(Timeline->IsNewTrackNameValid(TEXT("Ding")));
	EXPECT_FALSE(Timeline->IsNewTrackNameValid(NAME_None));
	EXPECT_TRUE(Timeline->IsNewTrackNameValid(TEXT("Tint")));

	FTTFloatTrack Speed;
	Speed.SetTrackName(TEXT("Speed"), Timeline);
	Timeline->FloatTracks.Add(Speed);
	Timeline->AddDisplayTrack({FTTTrackId::FloatInterp, 1});
	Timeline->RemoveDisplayTrack(0);
	ASSERT_EQ(Timeline->GetNumDisplayTracks(), 2);
	EXPECT_EQ(Timeline->GetDisplayTrackId(1).TrackIndex, 0);
}

TEST(TimelineTemplate, LengthFollowsTheLastKeyWhenAsked)
{
	UTimelineTemplate* Timeline = NewObject<UTimelineTemplate>(GetTransientPackage(), TEXT("Fade_Template"));
	UCurveFloat* Curve = NewObject<UCurveFloat>(Timeline);
	Curve->FloatCurve.AddKey(0.f, 0.f);
	Curve->FloatCurve.AddKey(2.5f, 1.f);
	FTTFloatTrack Track;
	Track.CurveFloat = Curve;
	Timeline->FloatTracks.Add(Track);
	UCurveVector* Vector = NewObject<UCurveVector>(Timeline);
	Vector->FloatCurves[2].AddKey(4.f, 9.f);
	FTTVectorTrack VectorTrack;
	VectorTrack.CurveVector = Vector;
	Timeline->VectorTracks.Add(VectorTrack);

	EXPECT_FLOAT_EQ(Timeline->GetTimelineLength(), 5.f);
	Timeline->LengthMode = TL_LastKeyFrame;
	EXPECT_FLOAT_EQ(Timeline->GetTimelineLength(), 4.f);
	EXPECT_EQ(Vector->GetVectorValue(4.f), FVector(0.0, 0.0, 9.0));
}

TEST(TimelineTemplate, TracksAndCurvesSurviveSaveAndLoad)
{
	FTempProjectFolder Project(TEXT("Timelines"));
	Project.Open();
	const TCHAR* PackageName = TEXT("/Game/Timelines/BP_Saved");
	{
		UPackage* Package = CreatePackage(PackageName);
		UBlueprint* Blueprint = NewObject<UBlueprint>(Package, TEXT("BP_Saved"), RF_Public | RF_Standalone | RF_Transactional);
		Blueprint->ParentClass = AActor::StaticClass();
		UTimelineTemplate* Timeline = NewObject<UTimelineTemplate>(Blueprint, TEXT("Open_Template"), RF_Transactional);
		Timeline->LengthMode = TL_LastKeyFrame;
		Blueprint->Timelines.Add(Timeline);
		UCurveFloat* Curve = NewObject<UCurveFloat>(Timeline, TEXT("Angle_Curve"), RF_Transactional);
		Curve->FloatCurve.AddKey(0.f, 0.f);
		Curve->FloatCurve.AddKey(1.5f, 90.f);
		Curve->FloatCurve.Keys[0].InterpMode = RCIM_Cubic;
		FTTFloatTrack Angle;
		Angle.SetTrackName(TEXT("Angle"), Timeline);
		Angle.CurveFloat = Curve;
		Timeline->FloatTracks.Add(Angle);
		UCurveLinearColor* Colour = NewObject<UCurveLinearColor>(Timeline, TEXT("Tint_Curve"), RF_Transactional);
		Colour->FloatCurves[3].AddKey(0.5f, 0.25f);
		FTTLinearColorTrack Tint;
		Tint.SetTrackName(TEXT("Tint"), Timeline);
		Tint.CurveLinearColor = Colour;
		Timeline->LinearColorTracks.Add(Tint);
		Timeline->AddDisplayTrack({FTTTrackId::FloatInterp, 0});
		Timeline->AddDisplayTrack({FTTTrackId::LinearColorInterp, 0});

		const FString Filename = FPackageName::LongPackageNameToFilename(PackageName, TEXT(".uasset"));
		ASSERT_TRUE(UPackage::Save(Package, Blueprint, *Filename, FSavePackageArgs()).IsSuccessful());
		TArray<UObject*> Inner;
		GetObjectsWithOuter(Package, Inner, true);
		for (UObject* Object : Inner)
		{
			Object->MarkAsGarbage();
		}
		Package->MarkAsGarbage();
		CollectGarbage(RF_NoFlags);
	}
	UPackage* Package = LoadPackage(nullptr, PackageName, LOAD_None);
	ASSERT_NE(Package, nullptr);
	UBlueprint* Blueprint = FindObject<UBlueprint>(Package, TEXT("BP_Saved"));
	ASSERT_NE(Blueprint, nullptr);
	ASSERT_EQ(Blueprint->Timelines.Num(), 1);
	const UTimelineTemplate* Timeline = Blueprint->Timelines[0];
	EXPECT_EQ(Timeline->LengthMode, TL_LastKeyFrame);
	ASSERT_EQ(Timeline->FloatTracks.Num(), 1);
	EXPECT_EQ(Timeline->FloatTracks[0].TrackName, FName(TEXT("Angle")));
	ASSERT_NE(Timeline->FloatTracks[0].CurveFloat.Get(), nullptr);
	const FRichCurve& Loaded = Timeline->FloatTracks[0].CurveFloat->FloatCurve;
	ASSERT_EQ(Loaded.GetNumKeys(), 2);
	EXPECT_EQ(Loaded.Keys[0].InterpMode, RCIM_Cubic);
	EXPECT_FLOAT_EQ(Loaded.Keys[1].Value, 90.f);
	ASSERT_EQ(Timeline->LinearColorTracks.Num(), 1);
	ASSERT_NE(Timeline->LinearColorTracks[0].CurveLinearColor.Get(), nullptr);
	EXPECT_EQ(Timeline->LinearColorTracks[0].CurveLinearColor->FloatCurves[3].GetNumKeys(), 1);
	EXPECT_EQ(Timeline->LinearColorTracks[0].CurveLinearColor->FloatCurves[0].GetNumKeys(), 0);
	EXPECT_EQ(Timeline->TrackDisplayOrder.Num(), 2);
	EXPECT_FLOAT_EQ(Timeline->GetTimelineLength(), 1.5f);
}
