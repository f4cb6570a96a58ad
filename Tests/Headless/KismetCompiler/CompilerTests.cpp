#include "Headless/UnrealEd/EditorTestUtils.h"

#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "Engine/TimelineTemplate.h"
#include "GameFramework/Actor.h"
#include "K2Node_CallFunction.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_FunctionResult.h"
#include "K2Node_VariableGet.h"
#include "KismetCompiler.h"
#include "UObject/Interface.h"
#include "UObject/UnrealType.h"

#include <functional>

using namespace EditorTest;

namespace
{
	class FCompiler : public FEditorFixture
	{
	protected:
		FCompiler() : FEditorFixture(TEXT("CompilerTests")) {}

		UBlueprint* MakeActorBlueprint(const TCHAR* Name = TEXT("BP_Case"))
		{
			UBlueprint* Blueprint = Create(AActor::StaticClass(), Name);
			EXPECT_NE(Blueprint, nullptr);
			return Blueprint;
		}

		static FCompilerResultsLog CompileWithLog(UBlueprint* Blueprint)
		{
			FCompilerResultsLog Log;
			FKismetEditorUtilities::CompileBlueprint(Blueprint, EBlueprintCompileOptions::None, &Log);
			return Log;
		}

		template <typename T, typename SetupType>
		static T* Place(UEdGraph* Graph, SetupType&& Setup)
		{
			T* Node = static_cast<T*>(Graph->CreateNode(T::StaticClass(), false, false));
			Node->CreateNewGuid();
			Setup(*Node);
			Node->PostPlacedNewNode();
			Node->AllocateDefaultPins();
			return Node;
		}

		static UK2Node_CallFunction* CallLibrary(UEdGraph* Graph, const TCHAR* ClassPath, const TCHAR* FunctionName)
		{
			UClass* Library = FindClass(ClassPath);
			return Place<UK2Node_CallFunction>(Graph, [&](UK2Node_CallFunction& Node)
			{
				if (UFunction* Function = Library ? Library->FindFunctionByName(FunctionName) : nullptr)
				{
					Node.SetFromFunction(Function);
				}
				else
				{
					Node.FunctionReference.SetExternalMember(FunctionName, Library);
				}
			});
		}

		static UK2Node_CallFunction* PrintString(UEdGraph* Graph)
		{
			return CallLibrary(Graph, TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
		}

		/** The disabled BeginPlay event, put to use. */
		static UK2Node_Event* BeginPlay(UBlueprint* Blueprint)
		{
			UK2Node_Event* Event = FBlueprintEditorUtils::FindOverrideForFunction(Blueprint, AActor::StaticClass(), TEXT("ReceiveBeginPlay"));
			if (Event)
			{
				Event->EnabledState = ENodeEnabledState::Enabled;
			}
			return Event;
		}

		static void Link(UEdGraphNode* From, const TCHAR* FromPin, UEdGraphNode* To, const TCHAR* ToPin)
		{
			UEdGraphPin* A = From->FindPin(FromPin, EGPD_Output);
			UEdGraphPin* B = To->FindPin(ToPin, EGPD_Input);
			ASSERT_NE(A, nullptr) << U8(FString(FromPin));
			ASSERT_NE(B, nullptr) << U8(FString(ToPin));
			A->MakeLinkTo(B);
		}

		static UK2Node_FunctionEntry* EntryOf(const UEdGraph* Graph)
		{
			for (UEdGraphNode* Node : Graph->Nodes)
			{
				if (UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(Node))
				{
					return Entry;
				}
			}
			return nullptr;
		}
	};

	FString DescribeParams(const UFunction* Function)
	{
		FString Result;
		for (FField* Field = Function->ChildProperties; Field; Field = Field->Next)
		{
			const FProperty* Property = CastField<FProperty>(Field);
			if (!Property)
			{
				continue;
			}
			Result += Property->GetName() + TEXT(":") + Property->GetClass()->GetName();
			if (Property->HasAnyPropertyFlags(CPF_OutParm))
			{
				Result += TEXT("(out)");
			}
			else if (!Property->HasAnyPropertyFlags(CPF_Parm))
			{
				Result += TEXT("(local)");
			}
			Result += TEXT(";");
		}
		return Result;
	}
}

TEST_F(FCompiler, ANewBlueprintCompilesCleanly)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	EXPECT_EQ(Blueprint->Status, BS_UpToDate);
	FCompilerResultsLog Log = CompileWithLog(Blueprint);
	EXPECT_EQ(Messages(Log), "");
	EXPECT_EQ(Log.NumErrors, 0);
	EXPECT_EQ(Blueprint->Status, BS_UpToDate);
	ASSERT_NE(Blueprint->SkeletonGeneratedClass.Get(), nullptr);
	EXPECT_EQ(U8(Blueprint->SkeletonGeneratedClass->GetName()), "SKEL_BP_Case_C");
	EXPECT_TRUE(FKismetEditorUtilities::IsClassABlueprintSkeleton(Blueprint->SkeletonGeneratedClass));
	EXPECT_FALSE(FKismetEditorUtilities::IsClassABlueprintSkeleton(Blueprint->GeneratedClass));
	EXPECT_TRUE(Blueprint->GeneratedClass->HasAnyClassFlags(CLASS_CompiledFromBlueprint));
	// The construction script is a function of the class; disabled default events are not.
	EXPECT_NE(Blueprint->GeneratedClass->FindFunctionByName(TEXT("UserConstructionScript"), EIncludeSuperFlag::ExcludeSuper), nullptr);
	EXPECT_EQ(Blueprint->GeneratedClass->FindFunctionByName(TEXT("ReceiveTick"), EIncludeSuperFlag::ExcludeSuper), nullptr);
}

TEST_F(FCompiler, ASoundGraphCompilesWithoutMessages)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UEdGraph* EventGraph = FBlueprintEditorUtils::FindEventGraph(Blueprint);
	UK2Node_Event* Event = BeginPlay(Blueprint);
	ASSERT_NE(Event, nullptr);
	UK2Node_CallFunction* Print = PrintString(EventGraph);
	ASSERT_NE(Print->GetTargetFunction(), nullptr);
	Link(Event, TEXT("then"), Print, TEXT("execute"));
	Print->FindPin(TEXT("InString"))->DefaultValue = TEXT("Hello");
	FCompilerResultsLog Log = CompileWithLog(Blueprint);
	EXPECT_EQ(Messages(Log), "");
	EXPECT_EQ(Blueprint->Status, BS_UpToDate);
	// The override event is now part of the class.
	UFunction* Override = Blueprint->GeneratedClass->FindFunctionByName(TEXT("ReceiveBeginPlay"), EIncludeSuperFlag::ExcludeSuper);
	ASSERT_NE(Override, nullptr);
	EXPECT_EQ(Override->GetSuperFunction(), AActor::StaticClass()->FindFunctionByName(TEXT("ReceiveBeginPlay")));
}

TEST_F(FCompiler, BrokenGraphsReportTheEditorsErrors)
{
	struct FCase
	{
		const char* Name;
		std::function<void(FCompiler&, UBlueprint*)> Break;
		const char* ExpectedMessage;
		EBlueprintStatus ExpectedStatus;
	};
	const FCase Cases[] = {
		{ "variable of a struct that does not exist",
			[](FCompiler&, UBlueprint* BP) { FBlueprintEditorUtils::AddMemberVariable(BP, TEXT("Broken"), PinType(UEdGraphSchema_K2::PC_Struct)); },
			"The variable Broken declared in BP_Case has an invalid type", BS_Error },
		{ "call of a function that does not exist",
			[](FCompiler&, UBlueprint* BP) { CallLibrary(FBlueprintEditorUtils::FindEventGraph(BP), TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintStrung")); },
			"PrintStrung", BS_Error },
		{ "wire between incompatible pins",
			[](FCompiler&, UBlueprint* BP)
			{
				UEdGraph* Graph = FBlueprintEditorUtils::FindEventGraph(BP);
				UK2Node_CallFunction* Add = CallLibrary(Graph, TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Add_IntInt"));
				UK2Node_CallFunction* Print = PrintString(Graph);
				Link(Add, TEXT("ReturnValue"), Print, TEXT("bPrintToScreen"));
			},
			"Can't connect pins ", BS_Error },
		{ "member call on another class without a target",
			[](FCompiler&, UBlueprint* BP)
			{
				UEdGraph* Graph = FBlueprintEditorUtils::FindEventGraph(BP);
				UK2Node_CallFunction* Call = CallLibrary(Graph, TEXT("/Script/Engine.SceneComponent"), TEXT("K2_GetComponentLocation"));
				ASSERT_NE(Call->GetTargetFunction(), nullptr);
			},
			"This blueprint (self) is not a ", BS_Error },
		{ "value that does not suit its pin",
			[](FCompiler&, UBlueprint* BP) { PrintString(FBlueprintEditorUtils::FindEventGraph(BP))->FindPin(TEXT("Duration"))->DefaultValue = TEXT("soon"); },
			"The current value of the ' Duration ' pin is invalid:", BS_Error },
		{ "exec output wired twice",
			[](FCompiler&, UBlueprint* BP)
			{
				UEdGraph* Graph = FBlueprintEditorUtils::FindEventGraph(BP);
				UK2Node_Event* Event = BeginPlay(BP);
				Link(Event, TEXT("then"), PrintString(Graph), TEXT("execute"));
				Link(Event, TEXT("then"), PrintString(Graph), TEXT("execute"));
			},
			"cannot have more than one connection", BS_Error },
		{ "two custom events of one name",
			[](FCompiler&, UBlueprint* BP)
			{
				UEdGraph* Graph = FBlueprintEditorUtils::FindEventGraph(BP);
				Place<UK2Node_CustomEvent>(Graph, [](UK2Node_CustomEvent& Node) { Node.CustomFunctionName = TEXT("Fire"); });
				Place<UK2Node_CustomEvent>(Graph, [](UK2Node_CustomEvent& Node) { Node.CustomFunctionName = TEXT("Fire"); });
			},
			"Fire", BS_Error },
		{ "variable node of a variable that does not exist",
			[](FCompiler&, UBlueprint* BP)
			{
				UEdGraph* Graph = FBlueprintEditorUtils::FindEventGraph(BP);
				UK2Node_VariableGet* Node = static_cast<UK2Node_VariableGet*>(Graph->CreateNode(UK2Node_VariableGet::StaticClass(), false, false));
				Node->VariableReference.SetSelfMember(TEXT("Ghost"));
				Node->CreateNewGuid();
				Node->AllocateDefaultPins();
			},
			"Make sure '", BS_UpToDateWithWarnings },
		{ "two nodes for one override event",
			[](FCompiler&, UBlueprint* BP)
			{
				BeginPlay(BP);
				Place<UK2Node_Event>(FBlueprintEditorUtils::FindEventGraph(BP), [](UK2Node_Event& Node)
				{
					Node.EventReference.SetExternalMember(TEXT("ReceiveBeginPlay"), AActor::StaticClass());
					Node.bOverrideFunction = true;
				});
			},
			"Found more than one function with the same name ReceiveBeginPlay", BS_Error },
		{ "no parent class",
			[](FCompiler&, UBlueprint* BP) { BP->ParentClass = nullptr; },
			"Blueprint BP_Case has a malformed parent class. Parent class may have been deleted.", BS_Error },
		{ "expose on spawn without instance editing (a warning only)",
			[](FCompiler&, UBlueprint* BP)
			{
				FBlueprintEditorUtils::AddMemberVariable(BP, TEXT("Speed"), PinType(UEdGraphSchema_K2::PC_Int));
				FBlueprintEditorUtils::SetBlueprintVariableMetaData(BP, TEXT("Speed"), nullptr, FBlueprintMetadata::MD_ExposeOnSpawn, TEXT("true"));
			},
			"Variable Speed is marked as 'Expose on Spawn' but not marked as 'Instance Editable'; please make it 'Instance Editable'", BS_UpToDateWithWarnings },
		{ "default that cannot be read (a warning only)",
			[](FCompiler&, UBlueprint* BP) { FBlueprintEditorUtils::AddMemberVariable(BP, TEXT("Count"), PinType(UEdGraphSchema_K2::PC_Int), TEXT("many")); },
			"Can't parse default value 'many' for BP_Case. Property: Count.", BS_UpToDateWithWarnings },
	};
	// Also: a refused wire names its output pin, then its input pin, as the pins show themselves.
	{
		UBlueprint* Blueprint = MakeActorBlueprint(TEXT("BP_Wire"));
		UEdGraph* Graph = FBlueprintEditorUtils::FindEventGraph(Blueprint);
		UK2Node_CallFunction* Add = CallLibrary(Graph, TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Add_IntInt"));
		UK2Node_CallFunction* Print = PrintString(Graph);
		Link(Add, TEXT("ReturnValue"), Print, TEXT("bPrintToScreen"));
		const std::string Expected = "Can't connect pins " + U8(Add->FindPin(TEXT("ReturnValue"))->GetDisplayName()) + " and "
			+ U8(Print->FindPin(TEXT("bPrintToScreen"))->GetDisplayName()) + ": ";
		FCompilerResultsLog Log = CompileWithLog(Blueprint);
		EXPECT_EQ(Messages(Log).rfind(Expected, 0), 0u) << Messages(Log);
		EXPECT_EQ(Log.NumErrors, 1) << Messages(Log);
	}
	int32 Index = 0;
	for (const FCase& Case : Cases)
	{
		UBlueprint* Blueprint = MakeActorBlueprint(*FString::Printf(TEXT("BP_Case%d"), Index++));
		ASSERT_NE(Blueprint, nullptr);
		Blueprint->Rename(TEXT("BP_Case"));
		Case.Break(*this, Blueprint);
		FCompilerResultsLog Log = CompileWithLog(Blueprint);
		const std::string Text = Messages(Log);
		EXPECT_NE(Text.find(Case.ExpectedMessage), std::string::npos) << Case.Name << "\n" << Text;
		EXPECT_EQ(Blueprint->Status, Case.ExpectedStatus) << Case.Name << "\n" << Text;
		if (Case.ExpectedStatus == BS_UpToDateWithWarnings)
		{
			EXPECT_EQ(Log.NumErrors, 0) << Case.Name << "\n" << Text;
			EXPECT_GT(Log.NumWarnings, 0) << Case.Name;
		}
		else
		{
			EXPECT_GT(Log.NumErrors, 0) << Case.Name;
		}
	}
}

TEST_F(FCompiler, FunctionLibrariesHoldNoVariables)
{
	UBlueprint* Library = Create(FindClass(TEXT("/Script/Engine.BlueprintFunctionLibrary")), TEXT("BP_Lib"), BPTYPE_FunctionLibrary);
	ASSERT_NE(Library, nullptr);
	FBlueprintEditorUtils::AddMemberVariable(Library, TEXT("Cache"), PinType(UEdGraphSchema_K2::PC_Int));
	FCompilerResultsLog Log = CompileWithLog(Library);
	EXPECT_NE(Messages(Log).find("The variable Cache cannot be declared in FunctionLibrary BP_Lib"), std::string::npos) << Messages(Log);
	EXPECT_EQ(Library->Status, BS_Error);
}

TEST_F(FCompiler, VariablesBecomePropertiesWithTheirFlagsMetadataAndDefaults)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UScriptStruct* Vector = TBaseStructure<FVector>::Get();
	struct FCase
	{
		const TCHAR* Name;
		FEdGraphPinType Type;
		const TCHAR* Default;
		const char* PropertyClass;
		const char* ExportedDefault;
	};
	const FCase Cases[] = {
		{ TEXT("Health"), PinType(UEdGraphSchema_K2::PC_Int), TEXT("42"), "IntProperty", "42" },
		{ TEXT("bAlive"), PinType(UEdGraphSchema_K2::PC_Boolean), TEXT("true"), "BoolProperty", "True" },
		{ TEXT("Title"), PinType(UEdGraphSchema_K2::PC_String), TEXT("Hero"), "StrProperty", "Hero" },
		{ TEXT("Speed"), PinType(UEdGraphSchema_K2::PC_Real, nullptr, UEdGraphSchema_K2::PC_Double), TEXT("2.5"), "DoubleProperty", "2.500000" },
		{ TEXT("Home"), PinType(UEdGraphSchema_K2::PC_Struct, Vector), TEXT("(X=1.0,Y=2.0,Z=3.0)"), "StructProperty", "(X=1.000000,Y=2.000000,Z=3.000000)" },
		{ TEXT("Labels"), PinType(UEdGraphSchema_K2::PC_Name, nullptr, NAME_None, EPinContainerType::Array), TEXT(""), "ArrayProperty", "" },
		{ TEXT("Friend"), PinType(UEdGraphSchema_K2::PC_Object, AActor::StaticClass()), TEXT(""), "ObjectProperty", "None" },
	};
	for (const FCase& Case : Cases)
	{
		ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, Case.Name, Case.Type, Case.Default)) << U8(FString(Case.Name));
	}
	FBlueprintEditorUtils::SetBlueprintVariableCategory(Blueprint, TEXT("Health"), nullptr, FText::FromString(TEXT("Stats")));
	FBlueprintEditorUtils::SetBlueprintOnlyEditableFlag(Blueprint, TEXT("Health"), false);
	FBlueprintEditorUtils::SetVariableSaveGameFlag(Blueprint, TEXT("Health"), true);
	FBlueprintEditorUtils::SetBlueprintVariableMetaData(Blueprint, TEXT("Health"), nullptr, FBlueprintMetadata::MD_Tooltip, TEXT("Hit points"));

	FCompilerResultsLog Log = CompileWithLog(Blueprint);
	EXPECT_EQ(Messages(Log), "");
	UClass* Class = Blueprint->GeneratedClass;
	UObject* Defaults = Class->GetDefaultObject();
	for (const FCase& Case : Cases)
	{
		FProperty* Property = Class->FindPropertyByName(Case.Name);
		ASSERT_NE(Property, nullptr) << U8(FString(Case.Name));
		EXPECT_EQ(U8(Property->GetClass()->GetName()), Case.PropertyClass) << U8(FString(Case.Name));
		EXPECT_EQ(Property->GetOwnerClass(), Class);
		EXPECT_TRUE(Property->HasAllPropertyFlags(CPF_Edit | CPF_BlueprintVisible)) << U8(FString(Case.Name));
		FString Exported;
		Property->ExportTextItem_InContainer(Exported, Defaults, nullptr, nullptr, PPF_None);
		EXPECT_EQ(U8(Exported), Case.ExportedDefault) << U8(FString(Case.Name));
		// The skeleton has the same member, so nodes resolve it before a full compile.
		EXPECT_NE(Blueprint->SkeletonGeneratedClass->FindPropertyByName(Case.Name), nullptr) << U8(FString(Case.Name));
	}
	FProperty* Health = Class->FindPropertyByName(TEXT("Health"));
	EXPECT_EQ(U8(Health->GetMetaData(TEXT("Category"))), "Stats");
	EXPECT_EQ(U8(Health->GetMetaData(TEXT("DisplayName"))), "Health");
	EXPECT_EQ(U8(Health->GetMetaData(TEXT("tooltip"))), "Hit points");
	EXPECT_TRUE(Health->HasAnyPropertyFlags(CPF_SaveGame));
	EXPECT_FALSE(Health->HasAnyPropertyFlags(CPF_DisableEditOnInstance));
	EXPECT_TRUE(Class->FindPropertyByName(TEXT("Friend"))->HasAnyPropertyFlags(CPF_DisableEditOnTemplate));
	// New objects of the class start from the defaults.
	UObject* Instance = NewObject<UObject>(GetTransientPackage(), Class);
	FString Exported;
	Health->ExportTextItem_InContainer(Exported, Instance, nullptr, nullptr, PPF_None);
	EXPECT_EQ(U8(Exported), "42");
}

TEST_F(FCompiler, RecompilingKeepsTheClassAndFollowsTheMembers)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UClass* Class = Blueprint->GeneratedClass;
	UClass* Skeleton = Blueprint->SkeletonGeneratedClass;
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Ammo"), PinType(UEdGraphSchema_K2::PC_Int), TEXT("5")));
	// The structural change reaches the skeleton at once, the generated class with the compile.
	EXPECT_NE(Skeleton->FindPropertyByName(TEXT("Ammo")), nullptr);
	EXPECT_EQ(Class->FindPropertyByName(TEXT("Ammo")), nullptr);
	EXPECT_EQ(Blueprint->Status, BS_Dirty);
	CompileWithLog(Blueprint);
	EXPECT_EQ(Blueprint->GeneratedClass.Get(), Class);
	EXPECT_EQ(Blueprint->SkeletonGeneratedClass.Get(), Skeleton);
	ASSERT_NE(Class->FindPropertyByName(TEXT("Ammo")), nullptr);

	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Label"), PinType(UEdGraphSchema_K2::PC_String), TEXT("Crate")));
	FBlueprintEditorUtils::RemoveMemberVariable(Blueprint, TEXT("Ammo"));
	CompileWithLog(Blueprint);
	EXPECT_EQ(Class->FindPropertyByName(TEXT("Ammo")), nullptr);
	FProperty* Label = Class->FindPropertyByName(TEXT("Label"));
	ASSERT_NE(Label, nullptr);
	FString Exported;
	Label->ExportTextItem_InContainer(Exported, Class->GetDefaultObject(), nullptr, nullptr, PPF_None);
	EXPECT_EQ(U8(Exported), "Crate");
	CollectGarbage(RF_NoFlags);
	EXPECT_EQ(Class->FindPropertyByName(TEXT("Label")), Label);
}

TEST_F(FCompiler, FunctionGraphsBecomeFunctionsWithTheirSignatures)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UEdGraph* Graph = AddFunction(Blueprint, TEXT("Heal"));
	UK2Node_FunctionEntry* Entry = EntryOf(Graph);
	ASSERT_NE(Entry, nullptr);
	Entry->CreateUserDefinedPin(TEXT("Amount"), PinType(UEdGraphSchema_K2::PC_Real, nullptr, UEdGraphSchema_K2::PC_Double), EGPD_Output);
	Entry->CreateUserDefinedPin(TEXT("Targets"), PinType(UEdGraphSchema_K2::PC_Object, AActor::StaticClass(), NAME_None, EPinContainerType::Array), EGPD_Output);
	UK2Node_FunctionResult* Result = FBlueprintEditorUtils::FindOrCreateFunctionResultNode(Entry);
	Result->CreateUserDefinedPin(TEXT("NewHealth"), PinType(UEdGraphSchema_K2::PC_Int), EGPD_Input);
	Link(Entry, TEXT("then"), Result, TEXT("execute"));
	FBlueprintEditorUtils::AddLocalVariable(Blueprint, Graph, TEXT("Scratch"), PinType(UEdGraphSchema_K2::PC_Boolean));
	Entry = EntryOf(Graph);
	Entry->MetaData.Category = FText::FromString(TEXT("Combat"));
	Entry->MetaData.ToolTip = FText::FromString(TEXT("Restores health"));

	UEdGraph* EventGraph = FBlueprintEditorUtils::FindEventGraph(Blueprint);
	UK2Node_CustomEvent* Fire = Place<UK2Node_CustomEvent>(EventGraph, [](UK2Node_CustomEvent& Node) { Node.CustomFunctionName = TEXT("Fire"); });
	Fire->CreateUserDefinedPin(TEXT("bLoud"), PinType(UEdGraphSchema_K2::PC_Boolean), EGPD_Output);

	FCompilerResultsLog Log = CompileWithLog(Blueprint);
	EXPECT_EQ(Messages(Log), "");
	UFunction* Heal = Blueprint->GeneratedClass->FindFunctionByName(TEXT("Heal"), EIncludeSuperFlag::ExcludeSuper);
	ASSERT_NE(Heal, nullptr);
	EXPECT_EQ(U8(DescribeParams(Heal)), "Amount:DoubleProperty;Targets:ArrayProperty(out);NewHealth:IntProperty(out);Scratch:BoolProperty(local);");
	EXPECT_TRUE(Heal->HasAllFunctionFlags(FUNC_BlueprintCallable | FUNC_BlueprintEvent | FUNC_Public | FUNC_HasOutParms));
	EXPECT_EQ(Heal->NumParms, 3);
	EXPECT_EQ(U8(Heal->GetMetaData(TEXT("Category"))), "Combat");
	EXPECT_EQ(U8(Heal->GetMetaData(TEXT("ToolTip"))), "Restores health");
	// Array inputs go by reference, as the editor passes them.
	EXPECT_TRUE(CastField<FProperty>(Heal->ChildProperties->Next)->HasAllPropertyFlags(CPF_Parm | CPF_OutParm | CPF_ReferenceParm));

	UFunction* FireFunction = Blueprint->GeneratedClass->FindFunctionByName(TEXT("Fire"), EIncludeSuperFlag::ExcludeSuper);
	ASSERT_NE(FireFunction, nullptr);
	EXPECT_EQ(U8(DescribeParams(FireFunction)), "bLoud:BoolProperty;");
	EXPECT_TRUE(FireFunction->HasAllFunctionFlags(FUNC_BlueprintCallable | FUNC_BlueprintEvent | FUNC_Event | FUNC_Public));
	// The skeleton carries the same signatures.
	EXPECT_NE(Blueprint->SkeletonGeneratedClass->FindFunctionByName(TEXT("Heal"), EIncludeSuperFlag::ExcludeSuper), nullptr);

	// A removed function leaves the class with the next compile.
	FBlueprintEditorUtils::RemoveGraph(Blueprint, Graph);
	CompileWithLog(Blueprint);
	EXPECT_EQ(Blueprint->GeneratedClass->FindFunctionByName(TEXT("Heal"), EIncludeSuperFlag::ExcludeSuper), nullptr);
}

TEST_F(FCompiler, EventDispatchersGetTheirSignatureFunctions)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UEdGraph* Signature = FBlueprintEditorUtils::CreateNewGraph(Blueprint, TEXT("OnDied"), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
	Blueprint->DelegateSignatureGraphs.Add(Signature);
	FGraphNodeCreator<UK2Node_FunctionEntry> Creator(*Signature);
	UK2Node_FunctionEntry* Entry = Creator.CreateNode();
	Entry->FunctionReference.SetExternalMember(TEXT("OnDied"), nullptr);
	Entry->bIsEditable = true;
	Creator.Finalize();
	Entry->CreateUserDefinedPin(TEXT("Killer"), PinType(UEdGraphSchema_K2::PC_Object, AActor::StaticClass()), EGPD_Output);
	FEdGraphPinType DelegateType = PinType(UEdGraphSchema_K2::PC_MCDelegate);
	DelegateType.PinSubCategoryMemberReference.MemberName = TEXT("OnDied");
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("OnDied"), DelegateType));
	EXPECT_TRUE(Blueprint->NewVariables[0].PropertyFlags & CPF_BlueprintAssignable);

	FCompilerResultsLog Log = CompileWithLog(Blueprint);
	EXPECT_EQ(Messages(Log), "");
	UFunction* SignatureFunction = Blueprint->GeneratedClass->FindFunctionByName(TEXT("OnDied__DelegateSignature"), EIncludeSuperFlag::ExcludeSuper);
	ASSERT_NE(SignatureFunction, nullptr);
	EXPECT_TRUE(SignatureFunction->IsA<UDelegateFunction>());
	EXPECT_TRUE(SignatureFunction->HasAllFunctionFlags(FUNC_Delegate | FUNC_MulticastDelegate));
	EXPECT_EQ(U8(DescribeParams(SignatureFunction)), "Killer:ObjectProperty;");
	FMulticastDelegateProperty* Property = CastField<FMulticastDelegateProperty>(Blueprint->GeneratedClass->FindPropertyByName(TEXT("OnDied")));
	ASSERT_NE(Property, nullptr);
	EXPECT_EQ(Property->SignatureFunction, SignatureFunction);
}

TEST_F(FCompiler, TimelinesAndComponentsBecomeMembers)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	ASSERT_NE(FBlueprintEditorUtils::AddNewTimeline(Blueprint, TEXT("Fade")), nullptr);
	UClass* SceneComponent = FindClass(TEXT("/Script/Engine.SceneComponent"));
	USCS_Node* Node = Blueprint->SimpleConstructionScript->CreateNode(SceneComponent, TEXT("Pivot"));
	Blueprint->SimpleConstructionScript->AddNode(Node);
	FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
	FCompilerResultsLog Log = CompileWithLog(Blueprint);
	EXPECT_EQ(Log.NumErrors, 0) << Messages(Log);
	FObjectProperty* Pivot = CastField<FObjectProperty>(Blueprint->GeneratedClass->FindPropertyByName(TEXT("Pivot")));
	ASSERT_NE(Pivot, nullptr);
	EXPECT_EQ(Pivot->PropertyClass, SceneComponent);
	EXPECT_TRUE(Pivot->HasAnyPropertyFlags(CPF_BlueprintVisible));
	EXPECT_EQ(U8(Pivot->GetMetaData(TEXT("Category"))), "BP_Case");
	UTimelineTemplate* Timeline = Blueprint->Timelines[0];
	EXPECT_NE(Blueprint->GeneratedClass->FindPropertyByName(Timeline->GetDirectionPropertyName()), nullptr);
	// Names of components and timelines are taken.
	EXPECT_EQ(U8(FBlueprintEditorUtils::FindUniqueKismetName(Blueprint, TEXT("Pivot"))), "Pivot_0");
}

TEST_F(FCompiler, InterfacesAreImplementedWithGraphsAndCarriedToTheClass)
{
	UBlueprint* Interface = Create(UInterface::StaticClass(), TEXT("BPI_Value"), BPTYPE_Interface);
	ASSERT_NE(Interface, nullptr);
	UEdGraph* GetValue = AddFunction(Interface, TEXT("GetValue"));
	UK2Node_FunctionResult* Result = FBlueprintEditorUtils::FindOrCreateFunctionResultNode(EntryOf(GetValue));
	Result->CreateUserDefinedPin(TEXT("Value"), PinType(UEdGraphSchema_K2::PC_Int), EGPD_Input);
	CompileWithLog(Interface);
	ASSERT_TRUE(Interface->GeneratedClass->HasAnyClassFlags(CLASS_Interface));

	UBlueprint* Blueprint = MakeActorBlueprint();
	const FTopLevelAssetPath Path = Interface->GeneratedClass->GetStructPathName();
	ASSERT_TRUE(FBlueprintEditorUtils::ImplementNewInterface(Blueprint, Path));
	EXPECT_FALSE(FBlueprintEditorUtils::ImplementNewInterface(Blueprint, Path));
	EXPECT_FALSE(FBlueprintEditorUtils::ImplementNewInterface(Blueprint, FTopLevelAssetPath(TEXT("/Game/Nowhere.Nothing_C"))));
	ASSERT_EQ(Blueprint->ImplementedInterfaces.Num(), 1);
	ASSERT_EQ(Blueprint->ImplementedInterfaces[0].Graphs.Num(), 1);
	UEdGraph* Implementation = Blueprint->ImplementedInterfaces[0].Graphs[0];
	EXPECT_EQ(U8(Implementation->GetName()), "GetValue");
	EXPECT_FALSE(Implementation->bAllowDeletion);
	EXPECT_NE(EntryOf(Implementation), nullptr);

	FCompilerResultsLog Log = CompileWithLog(Blueprint);
	EXPECT_EQ(Log.NumErrors, 0) << Messages(Log);
	EXPECT_TRUE(Blueprint->GeneratedClass->ImplementsInterface(Interface->GeneratedClass));
	EXPECT_NE(Blueprint->GeneratedClass->FindFunctionByName(TEXT("GetValue"), EIncludeSuperFlag::ExcludeSuper), nullptr);

	// A lost graph comes back; removing the interface takes its graphs along.
	FBlueprintEditorUtils::ConformImplementedInterfaces(Blueprint);
	EXPECT_EQ(Blueprint->ImplementedInterfaces[0].Graphs.Num(), 1);
	FBlueprintEditorUtils::RemoveInterface(Blueprint, Path);
	EXPECT_EQ(Blueprint->ImplementedInterfaces.Num(), 0);
	CompileWithLog(Blueprint);
	EXPECT_FALSE(Blueprint->GeneratedClass->ImplementsInterface(Interface->GeneratedClass));
}

TEST_F(FCompiler, ChildBlueprintsFollowTheirParent)
{
	UBlueprint* Parent = MakeActorBlueprint(TEXT("BP_Parent"));
	UBlueprint* Child = Create(Parent->GeneratedClass, TEXT("BP_Child"));
	ASSERT_NE(Child, nullptr);
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Parent, TEXT("Shared"), PinType(UEdGraphSchema_K2::PC_Int), TEXT("7")));
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Child, TEXT("Own"), PinType(UEdGraphSchema_K2::PC_Int), TEXT("9")));
	CompileWithLog(Child);
	CompileWithLog(Parent);
	EXPECT_EQ(Child->Status, BS_UpToDate);
	UClass* ChildClass = Child->GeneratedClass;
	FProperty* Shared = ChildClass->FindPropertyByName(TEXT("Shared"));
	FProperty* Own = ChildClass->FindPropertyByName(TEXT("Own"));
	ASSERT_NE(Shared, nullptr);
	ASSERT_NE(Own, nullptr);
	// The child's own member sits after everything the parent holds.
	EXPECT_GE(Own->GetOffset_ForInternal(), Parent->GeneratedClass->GetPropertiesSize());
	FString SharedText, OwnText;
	Shared->ExportTextItem_InContainer(SharedText, ChildClass->GetDefaultObject(), nullptr, nullptr, PPF_None);
	Own->ExportTextItem_InContainer(OwnText, ChildClass->GetDefaultObject(), nullptr, nullptr, PPF_None);
	EXPECT_EQ(U8(SharedText), "7");
	EXPECT_EQ(U8(OwnText), "9");
	// A member of the parent's name is renamed in the child.
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Parent, TEXT("Own"), PinType(UEdGraphSchema_K2::PC_Int)));
	EXPECT_EQ(FBlueprintEditorUtils::FindNewVariableIndex(Child, TEXT("Own")), INDEX_NONE);
	EXPECT_NE(FBlueprintEditorUtils::FindNewVariableIndex(Child, TEXT("Own_0")), INDEX_NONE);
}

TEST_F(FCompiler, CompiledBlueprintsSaveAndLoad)
{
	UBlueprint* Blueprint = MakeActorBlueprint(TEXT("BP_Saved"));
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Health"), PinType(UEdGraphSchema_K2::PC_Int), TEXT("100")));
	UEdGraph* Graph = AddFunction(Blueprint, TEXT("Heal"));
	EntryOf(Graph)->CreateUserDefinedPin(TEXT("Amount"), PinType(UEdGraphSchema_K2::PC_Int), EGPD_Output);
	CompileWithLog(Blueprint);
	ASSERT_EQ(Blueprint->Status, BS_UpToDate);

	FString FirstBytes;
	UBlueprint* Loaded = SaveAndReload(Blueprint, &FirstBytes);
	ASSERT_NE(Loaded, nullptr);
	ASSERT_EQ(Loaded->NewVariables.Num(), 1);
	EXPECT_EQ(U8(Loaded->NewVariables[0].DefaultValue), "100");
	// Reading the package compiled the Blueprint, as the editor does on load.
	EXPECT_EQ(Loaded->Status, BS_UpToDate);
	EXPECT_NE(Loaded->GeneratedClass->FindPropertyByName(TEXT("Health")), nullptr);
	EXPECT_NE(Loaded->SkeletonGeneratedClass->FindPropertyByName(TEXT("Health")), nullptr);
	EXPECT_EQ(Loaded->GeneratedClass->GetSuperClass(), AActor::StaticClass());
	EXPECT_EQ(UBlueprint::GetBlueprintFromClass(Loaded->GeneratedClass), Loaded);
	// Saving what was loaded writes the same file.
	{
		ASSERT_TRUE(UPackage::Save(Loaded->GetPackage(), Loaded, *FileOf(Loaded), FSavePackageArgs()).IsSuccessful());
		FString SecondBytes;
		FFileHelper::LoadFileToString(SecondBytes, *FileOf(Loaded));
		EXPECT_EQ(U8(FirstBytes), U8(SecondBytes));
	}
	FCompilerResultsLog Log = CompileWithLog(Loaded);
	EXPECT_EQ(Messages(Log), "");
	EXPECT_EQ(Loaded->Status, BS_UpToDate);
	ASSERT_NE(Loaded->GeneratedClass.Get(), nullptr);
	FProperty* Health = Loaded->GeneratedClass->FindPropertyByName(TEXT("Health"));
	ASSERT_NE(Health, nullptr);
	FString Exported;
	Health->ExportTextItem_InContainer(Exported, Loaded->GeneratedClass->GetDefaultObject(), nullptr, nullptr, PPF_None);
	EXPECT_EQ(U8(Exported), "100");
	UFunction* Heal = Loaded->GeneratedClass->FindFunctionByName(TEXT("Heal"), EIncludeSuperFlag::ExcludeSuper);
	ASSERT_NE(Heal, nullptr);
	EXPECT_EQ(U8(DescribeParams(Heal)), "Amount:IntProperty;");
}

TEST_F(FCompiler, NodesAreRebuiltAgainstTheMembersTheyUse)
{
	UBlueprint* Blueprint = MakeActorBlueprint();
	UEdGraph* Graph = FBlueprintEditorUtils::FindEventGraph(Blueprint);
	// Placed before the variable exists: the node cannot know its type yet.
	UK2Node_VariableGet* Get = Place<UK2Node_VariableGet>(Graph, [](UK2Node_VariableGet& Node) { Node.VariableReference.SetSelfMember(TEXT("Score")); });
	EXPECT_EQ(Get->FindPin(TEXT("Score")), nullptr);
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Score"), PinType(UEdGraphSchema_K2::PC_Int)));
	FCompilerResultsLog Log = CompileWithLog(Blueprint);
	EXPECT_EQ(Messages(Log), "");
	const UEdGraphPin* Pin = Get->FindPin(TEXT("Score"));
	ASSERT_NE(Pin, nullptr);
	EXPECT_EQ(Pin->PinType.PinCategory, UEdGraphSchema_K2::PC_Int);
	EXPECT_EQ(Pin->Direction, EGPD_Output);
}

TEST_F(FCompiler, EveryKindOfParentTheToolsOfferCompiles)
{
	struct FCase
	{
		const TCHAR* ParentPath;
		EBlueprintType Type;
	};
	const FCase Cases[] = {
		{ TEXT("/Script/Engine.Actor"), BPTYPE_Normal },
		{ TEXT("/Script/Engine.ActorComponent"), BPTYPE_Normal },
		{ TEXT("/Script/Engine.SceneComponent"), BPTYPE_Normal },
		{ TEXT("/Script/CoreUObject.Object"), BPTYPE_Normal },
		{ TEXT("/Script/AIModule.BTTask_BlueprintBase"), BPTYPE_Normal },
		{ TEXT("/Script/UMG.UserWidget"), BPTYPE_Normal },
		{ TEXT("/Script/Engine.AnimInstance"), BPTYPE_Normal },
		{ TEXT("/Script/Engine.BlueprintFunctionLibrary"), BPTYPE_FunctionLibrary },
		{ TEXT("/Script/CoreUObject.Interface"), BPTYPE_Interface },
	};
	int32 Index = 0;
	for (const FCase& Case : Cases)
	{
		UClass* Parent = FindClass(Case.ParentPath);
		ASSERT_NE(Parent, nullptr) << U8(FString(Case.ParentPath));
		UBlueprint* Blueprint = Create(Parent, *FString::Printf(TEXT("BP_Kind%d"), Index++), Case.Type);
		ASSERT_NE(Blueprint, nullptr) << U8(FString(Case.ParentPath));
		FCompilerResultsLog Log = CompileWithLog(Blueprint);
		EXPECT_EQ(Messages(Log), "") << U8(FString(Case.ParentPath));
		EXPECT_EQ(Blueprint->Status, BS_UpToDate) << U8(FString(Case.ParentPath));
		EXPECT_TRUE(Blueprint->GeneratedClass->IsChildOf(Parent)) << U8(FString(Case.ParentPath));
	}
}
