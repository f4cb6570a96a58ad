// A Widget Blueprint of 500 widgets: building its tree (widgets, slots with layout, settings), compiling it (every
// other widget is a member variable), saving its package and loading it back (which compiles it again, as the
// editor does on load). Each step is timed on its own, in milliseconds. The project lives in a temporary folder
// removed at exit.

#include "../Common/BenchmarkPackages.h"
#include "../Common/BenchmarkProject.h"
#include "Animation/WidgetAnimation.h"
#include "Blueprint/UserWidget.h"
#include "Blueprint/WidgetTree.h"
#include "Components/Button.h"
#include "Components/CanvasPanel.h"
#include "Components/CanvasPanelSlot.h"
#include "Components/CheckBox.h"
#include "Components/EditableTextBox.h"
#include "Components/Image.h"
#include "Components/ProgressBar.h"
#include "Components/Slider.h"
#include "Components/Spacer.h"
#include "Components/SpinBox.h"
#include "Components/TextBlock.h"
#include "Components/VerticalBox.h"
#include "Components/VerticalBoxSlot.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformMisc.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Misc/PackageName.h"
#include "MovieScene.h"
#include "UObject/FieldIterator.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"
#include "WidgetBlueprint.h"

#include <benchmark/benchmark.h>

namespace
{
	constexpr int32 NumWidgets = 500;
	/** Every tenth widget is a vertical box on the root canvas; the widgets after it go in it. */
	constexpr int32 BoxEvery = 10;
	const TCHAR* const PackageName = TEXT("/Game/Bench/WBP_WidgetBench");
	const TCHAR* const AssetName = TEXT("WBP_WidgetBench");
	using UE::Benchmarks::FBenchProject;
	using UE::Benchmarks::ForgetPackage;
	using UE::Benchmarks::PackageFile;
	using UE::Benchmarks::SaveAssetPackage;
	using UE::Benchmarks::TimePackageLoads;

	void UnloadBench()
	{
		ForgetPackage(PackageName);
	}

	UWidgetBlueprint* MakeBlueprint()
	{
		UPackage* Package = CreatePackage(PackageName);
		return Cast<UWidgetBlueprint>(FKismetEditorUtilities::CreateBlueprint(UUserWidget::StaticClass(), Package, AssetName, BPTYPE_Normal,
			UWidgetBlueprint::StaticClass(), UBlueprintGeneratedClass::StaticClass()));
	}

	/** A leaf of one of nine kinds, with a setting changed from its default. */
	UWidget* MakeLeaf(UWidgetTree& Tree, int32 Index)
	{
		switch (Index % 9)
		{
		case 0:
		{
			UTextBlock* Text = Tree.ConstructWidget<UTextBlock>();
			Text->SetText(FText::FromString(FString::Printf(TEXT("Label %d"), Index)));
			return Text;
		}
		case 1: return Tree.ConstructWidget<UImage>();
		case 2: return Tree.ConstructWidget<UButton>();
		case 3:
		{
			UProgressBar* Bar = Tree.ConstructWidget<UProgressBar>();
			Bar->SetPercent(float(Index % 100) / 100.0f);
			return Bar;
		}
		case 4: return Tree.ConstructWidget<UCheckBox>();
		case 5: return Tree.ConstructWidget<USlider>();
		case 6:
		{
			USpinBox* Spin = Tree.ConstructWidget<USpinBox>();
			Spin->SetMaxValue(100.0f);
			return Spin;
		}
		case 7: return Tree.ConstructWidget<UEditableTextBox>();
		default:
		{
			USpacer* Spacer = Tree.ConstructWidget<USpacer>();
			Spacer->SetSize(FVector2D(8.0, 8.0));
			return Spacer;
		}
		}
	}

	/** The 500-widget tree and one animation; returns the number of widgets in the tree. */
	int32 FillTree(UWidgetBlueprint& Blueprint)
	{
		UWidgetTree& Tree = *Blueprint.WidgetTree;
		UCanvasPanel* Root = Tree.ConstructWidget<UCanvasPanel>(UCanvasPanel::StaticClass(), TEXT("Root"));
		Tree.RootWidget = Root;
		UVerticalBox* Box = nullptr;
		for (int32 Index = 1; Index < NumWidgets; ++Index)
		{
			if (Index % BoxEvery == 1)
			{
				Box = Tree.ConstructWidget<UVerticalBox>();
				UCanvasPanelSlot* BoxSlot = Root->AddChildToCanvas(Box);
				BoxSlot->SetPosition(FVector2D((Index / BoxEvery % 10) * 160.0, (Index / BoxEvery / 10) * 320.0));
				BoxSlot->SetSize(FVector2D(150.0, 300.0));
				Box->bIsVariable = (Index / BoxEvery) % 2 == 0;
				continue;
			}
			UWidget* Leaf = MakeLeaf(Tree, Index);
			Leaf->bIsVariable = Index % 2 == 0;
			UVerticalBoxSlot* LeafSlot = Box->AddChildToVerticalBox(Leaf);
			LeafSlot->SetPadding(FMargin(2.0f, float(Index % 4)));
			if (Index % 3 == 0)
			{
				LeafSlot->SetSize(FSlateChildSize(ESlateSizeRule::Fill));
			}
		}
		UWidgetAnimation* Animation = NewObject<UWidgetAnimation>(&Blueprint, TEXT("Intro"), RF_Transactional);
		Animation->GetMovieScene()->SetPlaybackRange(FFrameNumber(0), 24000);
		Blueprint.Animations.Add(Animation);
		TArray<UWidget*> Widgets;
		Tree.GetAllWidgets(Widgets);
		return Widgets.Num();
	}

	bool CheckProject(benchmark::State& State)
	{
		FBenchProject& Project = FBenchProject::Get();
		if (!Project.IsOpen())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return false;
		}
		FPlatformMisc::SeedGuidGenerator(1);
		return true;
	}

	/** Compiles and reports whether the compile found no error. */
	bool Compile(UWidgetBlueprint* Blueprint)
	{
		FCompilerResultsLog Log;
		Log.bSilentMode = true;
		FKismetEditorUtilities::CompileBlueprint(Blueprint, EBlueprintCompileOptions::None, &Log);
		return Log.NumErrors == 0;
	}

	void BM_BuildWidgetTree(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		int32 Widgets = 0;
		for (auto _ : State)
		{
			State.PauseTiming();
			UnloadBench();
			UWidgetBlueprint* Blueprint = MakeBlueprint();
			State.ResumeTiming();
			Widgets = FillTree(*Blueprint);
		}
		if (Widgets != NumWidgets)
		{
			State.SkipWithError("the tree does not have every widget");
		}
		State.counters["widgets"] = Widgets;
	}
	BENCHMARK(BM_BuildWidgetTree)->Unit(benchmark::kMillisecond);

	void BM_CompileWidgetBlueprint(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		UnloadBench();
		UWidgetBlueprint* Blueprint = MakeBlueprint();
		FillTree(*Blueprint);
		for (auto _ : State)
		{
			if (!Compile(Blueprint))
			{
				State.SkipWithError("the Widget Blueprint does not compile");
				return;
			}
		}
		int32 Members = 0;
		for (TFieldIterator<FProperty> It(Blueprint->GeneratedClass, EFieldIteratorFlags::ExcludeSuper); It; ++It)
		{
			++Members;
		}
		State.counters["members"] = Members;
	}
	BENCHMARK(BM_CompileWidgetBlueprint)->Unit(benchmark::kMillisecond);

	void BM_SaveWidgetBlueprint(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		UnloadBench();
		UWidgetBlueprint* Blueprint = MakeBlueprint();
		FillTree(*Blueprint);
		Compile(Blueprint);
		for (auto _ : State)
		{
			if (!SaveAssetPackage(State, Blueprint))
			{
				return;
			}
		}
		State.counters["bytes"] = double(IFileManager::Get().FileSize(*PackageFile(PackageName)));
	}
	BENCHMARK(BM_SaveWidgetBlueprint)->Unit(benchmark::kMillisecond);

	void BM_LoadWidgetBlueprint(benchmark::State& State)
	{
		if (!CheckProject(State))
		{
			return;
		}
		UnloadBench();
		UWidgetBlueprint* Blueprint = MakeBlueprint();
		FillTree(*Blueprint);
		Compile(Blueprint);
		if (!SaveAssetPackage(State, Blueprint))
		{
			return;
		}
		const int32 Widgets = TimePackageLoads(State, PackageName, [](UPackage* Package) {
			const UWidgetBlueprint* Loaded = FindObject<UWidgetBlueprint>(Package, AssetName);
			return Loaded ? Loaded->GetAllSourceWidgets().Num() : 0;
		});
		if (Widgets < 0)
		{
			return;
		}
		if (Widgets != NumWidgets)
		{
			State.SkipWithError("the loaded tree does not have every widget");
		}
		State.counters["widgets"] = Widgets;
	}
	BENCHMARK(BM_LoadWidgetBlueprint)->Unit(benchmark::kMillisecond);
}

BENCHMARK_MAIN();
