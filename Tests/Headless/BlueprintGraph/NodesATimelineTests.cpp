#include "NodesATestUtils.h"

#include "Engine/TimelineTemplate.h"
#include "K2Node_Timeline.h"

using namespace NodesATest;

namespace
{
	class NodesATimeline : public FBlueprintFixture
	{
	protected:
		UTimelineTemplate* AddTimeline(const TCHAR* Name)
		{
			const FString TemplateName = UTimelineTemplate::TimelineVariableNameToTemplateName(FName(Name));
			UTimelineTemplate* Template = NewObject<UTimelineTemplate>(Blueprint, *TemplateName, RF_Transactional);
			Template->TimelineGuid = FGuid::NewGuid();
			FTTEventTrack Knock;
			Knock.TrackName = TEXT("Knock");
			Template->EventTracks.Add(Knock);
			FTTFloatTrack Alpha;
			Alpha.TrackName = TEXT("Alpha");
			Template->FloatTracks.Add(Alpha);
			FTTVectorTrack Offset;
			Offset.TrackName = TEXT("Offset");
			Template->VectorTracks.Add(Offset);
			FTTLinearColorTrack Tint;
			Tint.TrackName = TEXT("Tint");
			Template->LinearColorTracks.Add(Tint);
			Blueprint->Timelines.Add(Template);
			return Template;
		}
	};
}

TEST_F(NodesATimeline, PinsFollowTheTracksOfItsTemplate)
{
	MakeBlueprint(FindClass(TEXT("/Script/Engine.Actor")));
	AddTimeline(TEXT("DoorTimeline"));
	UK2Node_Timeline* Timeline = Place<UK2Node_Timeline>(EventGraph, [](UK2Node_Timeline& Node) { Node.TimelineName = TEXT("DoorTimeline"); });
	EXPECT_EQ(DescribePins(Timeline),
		"Play:in:exec, PlayFromStart:in:exec, Stop:in:exec, Reverse:in:exec, ReverseFromEnd:in:exec, Update:out:exec, Finished:out:exec, "
		"SetNewTime:in:exec, NewTime:in:real/float, Direction:out:byte, Knock:out:exec, Alpha:out:real/float, Offset:out:struct, Tint:out:struct");
	EXPECT_EQ(U8(Timeline->GetNodeTitle(ENodeTitleType::FullTitle)), "DoorTimeline");
	EXPECT_EQ(U8(Timeline->GetNewTimePin()->DefaultValue), "0.0");
	const UEnum* Direction = Cast<UEnum>(Timeline->GetDirectionPin()->PinType.PinSubCategoryObject.Get());
	ASSERT_NE(Direction, nullptr);
	EXPECT_EQ(U8(Direction->GetPathName()), "/Script/Engine.ETimelineDirection");
	EXPECT_EQ(Timeline->GetTrackPin(TEXT("Offset"))->PinType.PinSubCategoryObject.Get(), TBaseStructure<FVector>::Get());
	EXPECT_EQ(Timeline->GetTrackPin(TEXT("Tint"))->PinType.PinSubCategoryObject.Get(), TBaseStructure<FLinearColor>::Get());
	EXPECT_TRUE(Timeline->GetCanRenameNode());
	FCompilerResultsLog Log;
	Timeline->ValidateNodeDuringCompilation(Log);
	EXPECT_EQ(Log.NumErrors, 0) << Messages(Log);

	// Renaming the node renames the timeline's template with it.
	Timeline->OnRenameNode(TEXT("Gate"));
	EXPECT_EQ(U8(Timeline->TimelineName), "Gate");
	ASSERT_NE(Timeline->FindTimelineTemplate(), nullptr);
	EXPECT_EQ(U8(Timeline->FindTimelineTemplate()->GetName()), "Gate_Template");

	FString FirstBytes;
	ASSERT_NE(SaveAndReload(&FirstBytes), nullptr);
	UK2Node_Timeline* Loaded = Cast<UK2Node_Timeline>(EventGraph->Nodes[0]);
	ASSERT_NE(Loaded, nullptr);
	EXPECT_EQ(U8(Loaded->TimelineName), "Gate");
	ASSERT_NE(Loaded->FindTimelineTemplate(), nullptr);
	Loaded->ReconstructNode();
	EXPECT_EQ(Loaded->Pins.Num(), 14);
	EXPECT_EQ(SaveAgainBytes(), FirstBytes);
}

TEST_F(NodesATimeline, ATimelineWithoutTemplateHasOnlyItsControls)
{
	MakeBlueprint(FindClass(TEXT("/Script/Engine.Actor")));
	UK2Node_Timeline* Timeline = Place<UK2Node_Timeline>(EventGraph, [](UK2Node_Timeline& Node) { Node.TimelineName = TEXT("Lost"); });
	EXPECT_EQ(Timeline->Pins.Num(), 10);
	EXPECT_EQ(Timeline->GetTrackPin(TEXT("Alpha")), nullptr);
	// The node itself reports nothing: without a template it simply plays nothing.
	FCompilerResultsLog Log;
	Timeline->ValidateNodeDuringCompilation(Log);
	EXPECT_EQ(Log.NumErrors + Log.NumWarnings, 0) << Messages(Log);
	EXPECT_EQ(U8(Timeline->GetNodeTitle(ENodeTitleType::FullTitle)), "Add Timeline...");
}
