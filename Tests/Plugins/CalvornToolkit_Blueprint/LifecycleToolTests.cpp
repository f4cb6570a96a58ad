#include "ToolSurfaceTestSupport.h"

#include "AssetRegistry/IAssetRegistry.h"
#include "BlueprintUtils.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_FunctionResult.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Misc/FileHelper.h"
#include "Operations/BlueprintGraphCreateOperation.h"
#include "Misc/Paths.h"
#include "Templates/Casts.h"
#include "UObject/Class.h"

using namespace ToolSurfaceTests;
using Calvorn::FToolResult;

namespace
{
	FString CreateRequest(const TCHAR* Path, const TCHAR* Type, const TCHAR* Parent)
	{
		return FString::Printf(TEXT("{\"path\": \"%s\", \"blueprint_parent_class\": {\"type\": \"%s\", \"parent_path\": \"%s\"}}"), Path, Type, Parent);
	}

	template <typename NodeType>
	NodeType* FindNode(const UEdGraph* Graph)
	{
		for (UEdGraphNode* Node : Graph->Nodes)
		{
			if (NodeType* Typed = Cast<NodeType>(Node))
			{
				return Typed;
			}
		}
		return nullptr;
	}

	UEdGraph* FindGraph(const TArray<TObjectPtr<UEdGraph>>& Graphs, const TCHAR* Name)
	{
		for (UEdGraph* Graph : Graphs)
		{
			if (Graph && Graph->GetName() == Name)
			{
				return Graph;
			}
		}
		return nullptr;
	}

	/** The user-declared pins of a node as "Name:category[/sub]" in order. */
	TArray<FString> UserPins(const UK2Node_EditablePinBase* Node)
	{
		TArray<FString> Pins;
		for (const TSharedPtr<FUserPinInfo>& Info : Node->UserDefinedPins)
		{
			FString Text = Info->PinName.ToString() + TEXT(":") + Info->PinType.PinCategory.ToString();
			if (!Info->PinType.PinSubCategory.IsNone())
			{
				Text += TEXT("/") + Info->PinType.PinSubCategory.ToString();
			}
			if (Info->PinType.IsArray())
			{
				Text += TEXT("[]");
			}
			Pins.Add(Text);
		}
		return Pins;
	}

	class LifecycleTools : public FToolSession
	{
	protected:
		UBlueprint* CreateBlueprint(const TCHAR* Path, const TCHAR* Parent = TEXT("/Script/Engine.Actor"), const TCHAR* Type = TEXT("native"))
		{
			const FToolResult Result = Call(TEXT("bp_create_asset"), CreateRequest(Path, Type, Parent));
			EXPECT_FALSE(Result.HasFailed()) << Describe(Result);
			FToolResult Lookup;
			return FBlueprintUtils::LoadBlueprint(Path, Lookup);
		}

		FString ReadFile(const FString& ContentRelative) const
		{
			FString Text;
			FFileHelper::LoadFileToString(Text, *ContentFile(ContentRelative));
			return Text;
		}
	};
}

TEST_F(LifecycleTools, CreatesEachAssetKindItsParentCallsFor)
{
	const struct
	{
		const TCHAR* Path;
		const TCHAR* Type;
		const TCHAR* Parent;
		const TCHAR* AssetClass;
		const TCHAR* ParentClassPath;
	} Cases[] = {
		{TEXT("/Game/Kinds/BP_ByPath"), TEXT("native"), TEXT("/Script/Engine.Actor"), TEXT("Blueprint"), TEXT("/Script/Engine.Actor")},
		{TEXT("/Game/Kinds/BP_ByName"), TEXT("class"), TEXT("Actor"), TEXT("Blueprint"), TEXT("/Script/Engine.Actor")},
		{TEXT("/Game/Kinds/BP_ByPrefixedName"), TEXT("native"), TEXT("AActor"), TEXT("Blueprint"), TEXT("/Script/Engine.Actor")},
		{TEXT("/Game/Kinds/BP_Quoted"), TEXT("native"), TEXT("Class'/Script/Engine.Actor'"), TEXT("Blueprint"), TEXT("/Script/Engine.Actor")},
		{TEXT("/Game/Kinds/ABP_Hero"), TEXT("native"), TEXT("/Script/Engine.AnimInstance"), TEXT("AnimBlueprint"), TEXT("/Script/Engine.AnimInstance")},
		{TEXT("/Game/Kinds/BTT_Patrol"), TEXT("native"), TEXT("/Script/AIModule.BTTask_BlueprintBase"), TEXT("Blueprint"), TEXT("/Script/AIModule.BTTask_BlueprintBase")},
		{TEXT("/Game/Kinds/WBP_Menu"), TEXT("native"), TEXT("/Script/UMG.UserWidget"), TEXT("WidgetBlueprint"), TEXT("/Script/UMG.UserWidget")},
		// A Blueprint parent, by its path: the child derives from the parent's generated class.
		{TEXT("/Game/Kinds/BP_Child"), TEXT("Blueprint"), TEXT("/Game/Kinds/BP_ByPath"), TEXT("Blueprint"), TEXT("/Game/Kinds/BP_ByPath.BP_ByPath_C")},
		{TEXT("/Game/Kinds/ABP_Child"), TEXT("blueprint"), TEXT("/Game/Kinds/ABP_Hero.ABP_Hero"), TEXT("AnimBlueprint"), TEXT("/Game/Kinds/ABP_Hero.ABP_Hero_C")},
	};
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Path));
		const FToolResult Result = Call(TEXT("bp_create_asset"), CreateRequest(Case.Path, Case.Type, Case.Parent));
		ASSERT_TRUE(Result.WasSuccessful()) << Describe(Result);
		EXPECT_FALSE(Result.HasFailed()) << Describe(Result);
		EXPECT_EQ(Result.GetDatas()->GetStringField(TEXT("asset_class")), Case.AssetClass);
		EXPECT_EQ(Result.GetDatas()->GetStringField(TEXT("parent_class")), Case.ParentClassPath);
		ASSERT_EQ(Result.GetSuccessMessages().Num(), 1);

		// Saved, registered and readable at once, by any spelling of its path.
		const FString Name = FPaths::GetCleanFilename(Case.Path);
		EXPECT_TRUE(FPaths::FileExists(ContentFile(TEXT("Kinds") / Name + TEXT(".uasset"))));
		const FString ObjectPath = FString(Case.Path) + TEXT(".") + Name;
		EXPECT_EQ(Result.GetDatas()->GetStringField(TEXT("path")), ObjectPath);
		EXPECT_TRUE(IAssetRegistry::GetChecked().GetAssetByObjectPath(FSoftObjectPath(ObjectPath)).IsValid());
		for (const FString& Spelling : {FString(Case.Path), ObjectPath, ObjectPath + TEXT("_C"), Name})
		{
			FToolResult Lookup;
			UBlueprint* Found = FBlueprintUtils::LoadBlueprint(Spelling, Lookup);
			ASSERT_NE(Found, nullptr) << U8(Spelling) << Describe(Lookup);
			EXPECT_EQ(Found->GetClass()->GetName(), Case.AssetClass);
			EXPECT_EQ(Found->GetPathName(), ObjectPath);
		}
	}
}

TEST_F(LifecycleTools, BadRequestsAndParentsAreRefusedAndLeaveNothingBehind)
{
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Bad/BP_Taken")), nullptr);
	const struct
	{
		FString Request;
		const TCHAR* Error;
	} Cases[] = {
		{TEXT("{}"), TEXT("Missing required field 'path'")},
		{TEXT("{\"path\": \"/Game/Bad/BP_A\"}"), TEXT("Missing field : blueprint_parent_class")},
		{TEXT("{\"path\": \"/Game/Bad/BP_A\", \"blueprint_parent_class\": {\"parent_path\": \"Actor\"}}"), TEXT("Missing required Parent class field: type")},
		{TEXT("{\"path\": \"/Game/Bad/BP_A\", \"blueprint_parent_class\": {\"type\": \"native\"}}"), TEXT("Missing required Parent class field: name")},
		{CreateRequest(TEXT("/Game/Bad/BP_A"), TEXT("blueprint"), TEXT("/Game/Bad/BP_Missing")), TEXT("Failed to find or load blueprint: /Game/Bad/BP_Missing")},
		{CreateRequest(TEXT("/Game/Bad/BP_A"), TEXT("native"), TEXT("NoSuchClassAnywhere")), TEXT("Parent class 'NoSuchClassAnywhere' is not valid for Blueprint creation.")},
		{CreateRequest(TEXT("/Game/Bad/BP_A"), TEXT("native"), TEXT("/Script/CoreUObject.Package")), TEXT("Parent class '/Script/CoreUObject.Package' is not valid for Blueprint creation.")},
		{CreateRequest(TEXT("/Game/Bad/BP_A"), TEXT("native"), TEXT("")), TEXT("Parent class '' is not valid for Blueprint creation.")},
	};
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Request));
		const FToolResult Result = Call(TEXT("bp_create_asset"), Case.Request);
		ASSERT_EQ(Result.GetErrorMessages().Num(), 1) << Describe(Result);
		EXPECT_EQ(Result.GetErrorMessages()[0], Case.Error);
		EXPECT_FALSE(FPaths::FileExists(ContentFile(TEXT("Bad/BP_A.uasset"))));
		FToolResult Lookup;
		EXPECT_EQ(FBlueprintUtils::LoadBlueprint(TEXT("/Game/Bad/BP_A"), Lookup), nullptr);
	}

	const FString Before = ReadFile(TEXT("Bad/BP_Taken.uasset"));
	const FToolResult Taken = Call(TEXT("bp_create_asset"), CreateRequest(TEXT("/Game/Bad/BP_Taken"), TEXT("native"), TEXT("Actor")));
	ASSERT_EQ(Taken.GetErrorMessages().Num(), 1) << Describe(Taken);
	EXPECT_TRUE(Taken.GetErrorMessages()[0].Contains(TEXT("already exists")));
	EXPECT_EQ(ReadFile(TEXT("Bad/BP_Taken.uasset")), Before);

	// Paths that name no asset of their own are refused before anything is made.
	for (const TCHAR* Path : {TEXT("Game/NoRoot"), TEXT("/Game/"), TEXT("/Game"), TEXT("/Game/../../etc/BP_Out"), TEXT("/Game/Bad/./BP_Here"),
			 TEXT("/Engine/BP_Engine"), TEXT("/Game/Bad/BP With Spaces")})
	{
		SCOPED_TRACE(U8(Path));
		const FToolResult BadPath = Call(TEXT("bp_create_asset"), CreateRequest(Path, TEXT("native"), TEXT("Actor")));
		ASSERT_EQ(BadPath.GetErrorMessages().Num(), 1) << Describe(BadPath);
		EXPECT_TRUE(BadPath.GetErrorMessages()[0].StartsWith(FString::Printf(TEXT("Invalid Blueprint path '%s'"), Path))) << Describe(BadPath);
	}
	EXPECT_EQ(FindObject<UBlueprint>(nullptr, TEXT("/Game.Game")), nullptr);
}

TEST_F(LifecycleTools, ASoundBlueprintCompilesAndIsSaved)
{
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Compile/BP_Sound")), nullptr);
	const FToolResult Result = Call(TEXT("compile_blueprint"), TEXT("{\"blueprint_paths\": [\"/Game/Compile/BP_Sound\"]}"));
	EXPECT_FALSE(Result.HasFailed()) << Describe(Result);
	ASSERT_EQ(Result.GetSuccessMessages().Num(), 1) << Describe(Result);
	EXPECT_EQ(Result.GetSuccessMessages()[0], TEXT("Successfully compiled and saved 1 Blueprint(s)"));
	FToolResult Lookup;
	EXPECT_TRUE(FBlueprintUtils::LoadBlueprint(TEXT("/Game/Compile/BP_Sound"), Lookup)->IsUpToDate());
}

TEST_F(LifecycleTools, WarningsAloneDoNotFailACompile)
{
	UBlueprint* Blueprint = CreateBlueprint(TEXT("/Game/Compile/BP_Warned"));
	ASSERT_NE(Blueprint, nullptr);
	// A default value the variable's type cannot read is a warning: the variable starts from its zero value.
	FBPVariableDescription& Speed = Blueprint->NewVariables.AddDefaulted_GetRef();
	Speed.VarName = TEXT("Speed");
	Speed.VarGuid = FGuid::NewGuid();
	Speed.VarType.PinCategory = UEdGraphSchema_K2::PC_Int;
	Speed.DefaultValue = TEXT("fast");

	const FToolResult Result = Call(TEXT("compile_blueprint"), TEXT("{\"blueprint_paths\": [\"/Game/Compile/BP_Warned.BP_Warned\"]}"));
	EXPECT_TRUE(Result.WasSuccessful()) << Describe(Result);
	ASSERT_EQ(Result.GetSuccessMessages().Num(), 1) << Describe(Result);
	EXPECT_EQ(Result.GetSuccessMessages()[0], TEXT("Successfully compiled and saved 1 Blueprint(s) with 1 warning(s)"));
	ASSERT_EQ(Result.GetWarningMessages().Num(), 1);
	EXPECT_TRUE(Result.GetWarningMessages()[0].StartsWith(TEXT("[/Game/Compile/BP_Warned.BP_Warned] "))) << U8(Result.GetWarningMessages()[0]);
	EXPECT_TRUE(Result.GetWarningMessages()[0].Contains(TEXT("fast"))) << U8(Result.GetWarningMessages()[0]);
	EXPECT_TRUE(ReadFile(TEXT("Compile/BP_Warned.uasset")).Contains(TEXT("Speed")));
}

TEST_F(LifecycleTools, ABrokenBlueprintListsItsErrorsAndIsNotSaved)
{
	UBlueprint* Blueprint = CreateBlueprint(TEXT("/Game/Compile/BP_Broken"));
	ASSERT_NE(Blueprint, nullptr);
	const FString SavedBefore = ReadFile(TEXT("Compile/BP_Broken.uasset"));
	ASSERT_FALSE(SavedBefore.IsEmpty());
	// A struct variable that names no struct has no type the compiler can give it.
	FBPVariableDescription& Broken = Blueprint->NewVariables.AddDefaulted_GetRef();
	Broken.VarName = TEXT("Nowhere");
	Broken.VarGuid = FGuid::NewGuid();
	Broken.VarType.PinCategory = UEdGraphSchema_K2::PC_Struct;

	const FToolResult Result = Call(TEXT("compile_blueprint"), TEXT("{\"blueprint_paths\": [\"/Game/Compile/BP_Broken\"]}"));
	EXPECT_FALSE(Result.WasSuccessful());
	ASSERT_GE(Result.GetErrorMessages().Num(), 2) << Describe(Result);
	EXPECT_EQ(Result.GetErrorMessages()[0], TEXT("Failed to compile all 1 Blueprint(s)"));
	EXPECT_TRUE(Result.GetErrorMessages()[1].StartsWith(TEXT("[/Game/Compile/BP_Broken.BP_Broken] "))) << U8(Result.GetErrorMessages()[1]);
	EXPECT_TRUE(AnyContains(Result.GetErrorMessages(), TEXT("Nowhere"))) << Describe(Result);
	EXPECT_EQ(Result.GetSuccessMessages().Num(), 0);
	EXPECT_EQ(ReadFile(TEXT("Compile/BP_Broken.uasset")), SavedBefore);
}

TEST_F(LifecycleTools, AMixedBatchCompilesWhatItCanAndIsNotASuccess)
{
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Compile/BP_Good")), nullptr);
	const FToolResult Result = Call(TEXT("compile_blueprint"), TEXT("{\"blueprint_paths\": [\"/Game/Compile/BP_Good\", \"/Game/Compile/BP_Unknown\", 42]}"));
	EXPECT_FALSE(Result.WasSuccessful());
	EXPECT_TRUE(Result.HasFailed());
	ASSERT_GE(Result.GetWarningMessages().Num(), 1) << Describe(Result);
	EXPECT_EQ(Result.GetWarningMessages()[0], TEXT("Compiled 1/3 Blueprint(s) successfully (2 failed)"));
	EXPECT_TRUE(Result.GetErrorMessages().Contains(TEXT("Failed to find or load blueprint: /Game/Compile/BP_Unknown.BP_Unknown"))) << Describe(Result);
	EXPECT_TRUE(Result.GetErrorMessages().Contains(TEXT("[/Game/Compile/BP_Unknown.BP_Unknown] Failed to load Blueprint"))) << Describe(Result);
	EXPECT_TRUE(Result.GetErrorMessages().Contains(TEXT("[] Failed to load Blueprint"))) << Describe(Result);

	const FToolResult Empty = Call(TEXT("compile_blueprint"), TEXT("{\"blueprint_paths\": []}"));
	EXPECT_TRUE(Empty.WasSuccessful());
	EXPECT_EQ(Empty.GetWarningMessages(), TArray<FString>{TEXT("No Blueprints specified for compilation")});
	const FToolResult Missing = Call(TEXT("compile_blueprint"), TEXT("{}"));
	EXPECT_EQ(Missing.GetErrorMessages(), TArray<FString>{TEXT("Missing required field 'blueprint_paths'")});
	const FToolResult AllFailed = Call(TEXT("compile_blueprint"), TEXT("{\"blueprint_paths\": [\"/Game/Nope\"]}"));
	ASSERT_GE(AllFailed.GetErrorMessages().Num(), 2) << Describe(AllFailed);
	EXPECT_TRUE(AllFailed.GetErrorMessages().Contains(TEXT("Failed to compile all 1 Blueprint(s)")));
}

TEST_F(LifecycleTools, DeletesUnreferencedBlueprintsAndRefusesReferencedOnes)
{
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Del/BP_Base")), nullptr);
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Del/BP_Derived"), TEXT("/Game/Del/BP_Base"), TEXT("blueprint")), nullptr);
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Del/BP_Lonely")), nullptr);

	const FToolResult Refused = Call(TEXT("delete_blueprint"), TEXT("{\"path\": \"/Game/Del/BP_Base\"}"));
	ASSERT_EQ(Refused.GetErrorMessages().Num(), 1) << Describe(Refused);
	EXPECT_TRUE(Refused.GetErrorMessages()[0].Contains(TEXT("/Game/Del/BP_Derived"))) << U8(Refused.GetErrorMessages()[0]);
	EXPECT_TRUE(FPaths::FileExists(ContentFile(TEXT("Del/BP_Base.uasset"))));

	const FToolResult Deleted = Call(TEXT("delete_blueprint"), TEXT("{\"path\": \"/Game/Del/BP_Lonely.BP_Lonely\"}"));
	EXPECT_FALSE(Deleted.HasFailed()) << Describe(Deleted);
	EXPECT_FALSE(FPaths::FileExists(ContentFile(TEXT("Del/BP_Lonely.uasset"))));
	EXPECT_TRUE(FPaths::FileExists(ContentFile(TEXT("Del/BP_Base.uasset"))));
	EXPECT_TRUE(FPaths::FileExists(ContentFile(TEXT("Del/BP_Derived.uasset"))));
	EXPECT_FALSE(IAssetRegistry::GetChecked().GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Del/BP_Lonely.BP_Lonely"))).IsValid());
	FToolResult Lookup;
	EXPECT_EQ(FBlueprintUtils::LoadBlueprint(TEXT("/Game/Del/BP_Lonely"), Lookup), nullptr);

	// Once its child is gone, the parent can go too.
	EXPECT_FALSE(Call(TEXT("delete_blueprint"), TEXT("{\"path\": \"/Game/Del/BP_Derived\"}")).HasFailed());
	const FToolResult Second = Call(TEXT("delete_blueprint"), TEXT("{\"path\": \"/Game/Del/BP_Base\"}"));
	EXPECT_FALSE(Second.HasFailed()) << Describe(Second);
	EXPECT_FALSE(FPaths::FileExists(ContentFile(TEXT("Del/BP_Base.uasset"))));
}

TEST_F(LifecycleTools, AFunctionGetsItsInputsOutputsAndReturnValue)
{
	UBlueprint* Blueprint = CreateBlueprint(TEXT("/Game/Graphs/BP_Health"));
	ASSERT_NE(Blueprint, nullptr);
	// An actor Blueprint starts with its construction script.
	const int32 FunctionsBefore = Blueprint->FunctionGraphs.Num();
	const FToolResult Result = Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Graphs/BP_Health", "functions": [
		{"name": "ApplyDamage", "parameters": [
			{"name": "Amount", "type": {"category": "float"}},
			{"name": "Source", "direction": "input", "type": {"category": "object", "sub_category_object": "Actor"}},
			{"name": "Tags", "type": {"category": "name", "container_type": "array"}},
			{"name": "bKilled", "direction": "output", "type": {"category": "bool"}}],
		 "return_type": {"category": "int"}},
		{"name": "Reset"}]})"));
	EXPECT_FALSE(Result.HasFailed()) << Describe(Result);
	EXPECT_EQ(Result.GetDatas()->GetStringField(TEXT("functions_created")), TEXT("2"));
	EXPECT_TRUE(Result.GetDatas()->HasField(TEXT("duration_seconds")));
	ASSERT_GE(Result.GetSuccessMessages().Num(), 1);
	EXPECT_EQ(Result.GetSuccessMessages().Last(), TEXT("Created or updated 2 function(s) and 0 delegate(s) in '/Game/Graphs/BP_Health.BP_Health'"));
	EXPECT_TRUE(Result.GetSuccessMessages().Contains(TEXT("Created new function graph: ApplyDamage, with graph_schema: EdGraphSchema_K2")));

	UEdGraph* Graph = FindGraph(Blueprint->FunctionGraphs, TEXT("ApplyDamage"));
	ASSERT_NE(Graph, nullptr);
	const UK2Node_FunctionEntry* Entry = FindNode<UK2Node_FunctionEntry>(Graph);
	const UK2Node_FunctionResult* ResultNode = FindNode<UK2Node_FunctionResult>(Graph);
	ASSERT_NE(Entry, nullptr);
	ASSERT_NE(ResultNode, nullptr);
	EXPECT_EQ(UserPins(Entry), (TArray<FString>{TEXT("Amount:real/float"), TEXT("Source:object"), TEXT("Tags:name[]")}));
	EXPECT_EQ(UserPins(ResultNode), (TArray<FString>{TEXT("bKilled:bool"), TEXT("ReturnValue:int")}));
	// The entry runs into the result node, so the function returns what it computes.
	const UEdGraphPin* Then = Entry->FindPin(UEdGraphSchema_K2::PN_Then);
	ASSERT_NE(Then, nullptr);
	ASSERT_EQ(Then->LinkedTo.Num(), 1);
	EXPECT_EQ(Then->LinkedTo[0]->GetOwningNode(), ResultNode);
	// Inputs are outputs of the entry node; outputs and the return value are inputs of the result node.
	ASSERT_NE(Entry->FindPin(TEXT("Amount")), nullptr);
	EXPECT_EQ(Entry->FindPin(TEXT("Amount"))->Direction, EGPD_Output);
	ASSERT_NE(ResultNode->FindPin(TEXT("ReturnValue")), nullptr);
	EXPECT_EQ(ResultNode->FindPin(TEXT("ReturnValue"))->Direction, EGPD_Input);

	// A function without outputs has no result node, until a repeated call gives it a return value.
	UEdGraph* Reset = FindGraph(Blueprint->FunctionGraphs, TEXT("Reset"));
	ASSERT_NE(Reset, nullptr);
	EXPECT_EQ(FindNode<UK2Node_FunctionResult>(Reset), nullptr);
	const FToolResult Again = Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Graphs/BP_Health", "functions": [{"name": "Reset", "return_type": {"category": "bool"}},
		{"name": "ApplyDamage", "parameters": [{"name": "Amount", "type": {"category": "float"}}]}]})"));
	EXPECT_FALSE(Again.HasFailed()) << Describe(Again);
	ASSERT_NE(FindNode<UK2Node_FunctionResult>(Reset), nullptr);
	EXPECT_EQ(UserPins(FindNode<UK2Node_FunctionResult>(Reset)), TArray<FString>{TEXT("ReturnValue:bool")});
	// Configuring the same parameter again does not add a second one.
	EXPECT_EQ(UserPins(Entry).Num(), 3);
	// Declaring it with another type changes its type in place.
	EXPECT_FALSE(Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Graphs/BP_Health", "functions": [
		{"name": "ApplyDamage", "parameters": [{"name": "Amount", "type": {"category": "int"}}]}]})")).HasFailed());
	EXPECT_EQ(UserPins(Entry).Num(), 3);
	EXPECT_TRUE(UserPins(Entry).Contains(TEXT("Amount:int"))) << U8(FString::Join(UserPins(Entry), TEXT(" ")));
	EXPECT_EQ(Blueprint->FunctionGraphs.Num(), FunctionsBefore + 2);

	// The functions are in the saved asset, and the Blueprint compiles with them.
	EXPECT_TRUE(ReadFile(TEXT("Graphs/BP_Health.uasset")).Contains(TEXT("ApplyDamage")));
	const FToolResult Compiled = Call(TEXT("compile_blueprint"), TEXT("{\"blueprint_paths\": [\"/Game/Graphs/BP_Health\"]}"));
	EXPECT_TRUE(Compiled.WasSuccessful()) << Describe(Compiled);
	EXPECT_EQ(Compiled.GetWarningMessages().Num(), 0) << Describe(Compiled);
}

TEST_F(LifecycleTools, BadFunctionEntriesAreReportedAndTheRestStands)
{
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Graphs/BP_Mixed")), nullptr);
	const FToolResult Result = Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Graphs/BP_Mixed", "functions": [
		7, {"parameters": []}, {"name": "Typo", "return_type": {"category": "quaternion"}},
		{"name": "Fine", "parameters": [{"name": "Broken", "type": {"category": "struct"}}, {"name": "Count", "type": {"category": "int"}}]}]})"));
	EXPECT_TRUE(Result.GetErrorMessages().Contains(TEXT("Function at index 0 is not a valid object"))) << Describe(Result);
	EXPECT_TRUE(Result.GetErrorMessages().Contains(TEXT("Invalid function specification for '' (index 1)"))) << Describe(Result);
	EXPECT_TRUE(Result.GetWarningMessages().Contains(TEXT("Function 'Typo' specified a return_type but the type could not be parsed; proceeding with default result node."))) << Describe(Result);
	EXPECT_TRUE(AnyContains(Result.GetWarningMessages(), TEXT("[Failure] Parameter 0 of 'Fine' was skipped"))) << Describe(Result);
	const FToolResult Clash = Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Graphs/BP_Mixed", "functions": [
		{"name": "Fine", "parameters": [{"name": "Count", "direction": "output", "type": {"category": "bool"}}]}]})"));
	EXPECT_TRUE(Clash.GetWarningMessages().Contains(TEXT("[Failure] Parameter 'Count' of 'Fine' is already an input; give the output another name"))) << Describe(Clash);
	EXPECT_EQ(Result.GetDatas()->GetStringField(TEXT("functions_created")), TEXT("2"));

	const struct
	{
		const TCHAR* Request;
		const TCHAR* Error;
	} Refusals[] = {
		{TEXT(R"({"functions": [{"name": "A"}]})"), TEXT("Missing required field 'path'")},
		{TEXT(R"({"path": "/Game/Graphs/BP_Mixed"})"), TEXT("Missing required 'functions' array with at least one entry")},
		{TEXT(R"({"path": "/Game/Graphs/BP_Mixed", "functions": []})"), TEXT("Missing required 'functions' array with at least one entry")},
		{TEXT(R"({"path": "/Game/Graphs/BP_Nowhere", "functions": [{"name": "A"}]})"), TEXT("Blueprint not found: /Game/Graphs/BP_Nowhere")},
		{TEXT(R"({"path": "/Game/Graphs/BP_Mixed", "functions": [{"name": "EventGraph"}]})"), TEXT("A graph named 'EventGraph' already exists in this Blueprint and is not a function graph; choose another name")},
		{TEXT(R"({"path": "/Game/Graphs/BP_Mixed", "functions": [{"name": "K2_DestroyActor"}]})"), TEXT("Function 'K2_DestroyActor' already exists in parent class Actor and cannot be overridden; choose another name")},
	};
	for (const auto& Refusal : Refusals)
	{
		SCOPED_TRACE(U8(Refusal.Request));
		const FToolResult Refused = Call(TEXT("bp_create_graph"), Refusal.Request);
		EXPECT_TRUE(Refused.GetErrorMessages().Contains(Refusal.Error)) << Describe(Refused);
		EXPECT_TRUE(Refused.GetDatas()->HasField(TEXT("duration_seconds")));
	}

	// Names the editor would not accept for a member are refused with its reason, for functions and dispatchers alike.
	for (const TCHAR* Entry : {TEXT(R"({"name": "Bad Name!"})"), TEXT(R"({"name": "Bad Name!", "is_delegate": true})")})
	{
		SCOPED_TRACE(U8(Entry));
		const FToolResult Refused = Call(TEXT("bp_create_graph"), FString::Printf(TEXT("{\"path\": \"/Game/Graphs/BP_Mixed\", \"functions\": [%s]}"), Entry));
		ASSERT_EQ(Refused.GetErrorMessages().Num(), 1) << Describe(Refused);
		EXPECT_TRUE(Refused.GetErrorMessages()[0].StartsWith(TEXT("Invalid "))) << Describe(Refused);
		EXPECT_TRUE(Refused.GetErrorMessages()[0].Contains(TEXT("name 'Bad Name!': "))) << Describe(Refused);
		EXPECT_EQ(Refused.GetDatas()->GetStringField(TEXT("functions_created")), TEXT("0"));
	}
}

TEST_F(LifecycleTools, ADelegateSignatureIsCallableAndEditable)
{
	UBlueprint* Blueprint = CreateBlueprint(TEXT("/Game/Graphs/BP_Door"));
	ASSERT_NE(Blueprint, nullptr);
	const FToolResult Result = Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Graphs/BP_Door", "functions": [
		{"name": "OnOpened", "is_delegate": true, "parameters": [{"name": "Opener", "type": {"category": "object", "sub_category_object": "/Script/Engine.Actor"}}]}]})"));
	EXPECT_FALSE(Result.HasFailed()) << Describe(Result);
	EXPECT_EQ(Result.GetSuccessMessages().Last(), TEXT("Created or updated 0 function(s) and 1 delegate(s) in '/Game/Graphs/BP_Door.BP_Door'"));

	UEdGraph* Graph = FindGraph(Blueprint->DelegateSignatureGraphs, TEXT("OnOpened"));
	ASSERT_NE(Graph, nullptr);
	EXPECT_EQ(FindGraph(Blueprint->FunctionGraphs, TEXT("OnOpened")), nullptr);
	const UK2Node_FunctionEntry* Entry = FindNode<UK2Node_FunctionEntry>(Graph);
	ASSERT_NE(Entry, nullptr);
	EXPECT_TRUE(Entry->HasAllExtraFlags(0xc020000)) << std::hex << Entry->GetExtraFlags();
	EXPECT_TRUE(Entry->HasAllExtraFlags(FUNC_BlueprintCallable | FUNC_BlueprintEvent | FUNC_Public));
	EXPECT_TRUE(Entry->IsEditable());
	EXPECT_EQ(UserPins(Entry), TArray<FString>{TEXT("Opener:object")});
	// The dispatcher itself is a multicast delegate variable of the same name.
	const FBPVariableDescription* Variable = Blueprint->NewVariables.FindByPredicate([](const FBPVariableDescription& V) { return V.VarName == TEXT("OnOpened"); });
	ASSERT_NE(Variable, nullptr);
	EXPECT_EQ(Variable->VarType.PinCategory, UEdGraphSchema_K2::PC_MCDelegate);

	// A dispatcher has inputs only and returns nothing: what does not fit is said, not silently dropped.
	const FToolResult Shaped = Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Graphs/BP_Door", "functions": [
		{"name": "OnClosed", "is_delegate": true, "parameters": [{"name": "Count", "direction": "output", "type": {"category": "int"}}], "return_type": {"category": "bool"}}]})"));
	EXPECT_FALSE(Shaped.HasFailed()) << Describe(Shaped);
	EXPECT_TRUE(AnyContains(Shaped.GetWarningMessages(), TEXT("[Warning] 'OnClosed' is an event dispatcher, whose parameters are all inputs"))) << Describe(Shaped);
	EXPECT_TRUE(AnyContains(Shaped.GetWarningMessages(), TEXT("[Warning] 'OnClosed' is an event dispatcher, which returns nothing"))) << Describe(Shaped);
	UEdGraph* Closed = FindGraph(Blueprint->DelegateSignatureGraphs, TEXT("OnClosed"));
	ASSERT_NE(Closed, nullptr);
	EXPECT_EQ(UserPins(FindNode<UK2Node_FunctionEntry>(Closed)), TArray<FString>{TEXT("Count:int")});
	EXPECT_EQ(FindNode<UK2Node_FunctionResult>(Closed), nullptr);

	// Asking again configures the same graph rather than making another.
	EXPECT_FALSE(Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Graphs/BP_Door", "functions": [{"name": "OnOpened", "is_delegate": true}]})")).HasFailed());
	EXPECT_EQ(Blueprint->DelegateSignatureGraphs.Num(), 2);
}

TEST_F(LifecycleTools, AParentsEventBecomesAnOverridingEventNotAFunction)
{
	UBlueprint* Blueprint = CreateBlueprint(TEXT("/Game/Graphs/BP_Events"));
	ASSERT_NE(Blueprint, nullptr);
	const int32 FunctionsBefore = Blueprint->FunctionGraphs.Num();

	const FString Request = TEXT(R"({"path": "/Game/Graphs/BP_Events", "functions": [{"name": "ReceiveDestroyed"}]})");
	const FToolResult First = Call(TEXT("bp_create_graph"), Request);
	EXPECT_FALSE(First.HasFailed()) << Describe(First);
	EXPECT_TRUE(AnyContains(First.GetSuccessMessages(), TEXT("This graph is implemented as an Event on the parent class and must be an event on this blueprint as well."))) << Describe(First);
	EXPECT_TRUE(AnyContains(First.GetSuccessMessages(), TEXT("as an override to Event ReceiveDestroyed in parent class Actor"))) << Describe(First);
	EXPECT_EQ(First.GetDatas()->GetStringField(TEXT("functions_created")), TEXT("0"));
	EXPECT_EQ(Blueprint->FunctionGraphs.Num(), FunctionsBefore);

	int32 Overrides = 0;
	for (UEdGraph* Page : Blueprint->UbergraphPages)
	{
		for (UEdGraphNode* Node : Page->Nodes)
		{
			const UK2Node_Event* Event = Cast<UK2Node_Event>(Node);
			Overrides += Event && Event->bOverrideFunction && Event->EventReference.GetMemberName() == TEXT("ReceiveDestroyed") ? 1 : 0;
		}
	}
	EXPECT_EQ(Overrides, 1);

	// The second time the event is there already: a warning points at it, and nothing is added.
	const FToolResult Second = Call(TEXT("bp_create_graph"), Request);
	EXPECT_FALSE(Second.HasFailed()) << Describe(Second);
	EXPECT_TRUE(AnyContains(Second.GetWarningMessages(), TEXT("The graph ReceiveDestroyed already exists as an event on this blueprint's EventGraph, overriding the parent class: Actor."))) << Describe(Second);
	int32 OverridesAfter = 0;
	for (UEdGraph* Page : Blueprint->UbergraphPages)
	{
		for (UEdGraphNode* Node : Page->Nodes)
		{
			const UK2Node_Event* Event = Cast<UK2Node_Event>(Node);
			OverridesAfter += Event && Event->bOverrideFunction && Event->EventReference.GetMemberName() == TEXT("ReceiveDestroyed") ? 1 : 0;
		}
	}
	EXPECT_EQ(OverridesAfter, 1);
	EXPECT_EQ(Blueprint->FunctionGraphs.Num(), FunctionsBefore);

	// BeginPlay is placed in every new Actor Blueprint, so the first request already meets it.
	const FToolResult BeginPlay = Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Graphs/BP_Events", "functions": [{"name": "ReceiveBeginPlay"}]})"));
	EXPECT_TRUE(AnyContains(BeginPlay.GetWarningMessages(), TEXT("The graph ReceiveBeginPlay already exists as an event"))) << Describe(BeginPlay);
}

TEST_F(LifecycleTools, TheEventGraphIsFoundOrMadeOnce)
{
	using FGraphCreate = FBlueprintGraphCreateOperation;
	UBlueprint* Blueprint = CreateBlueprint(TEXT("/Game/Graphs/BP_Pages"));
	ASSERT_NE(Blueprint, nullptr);
	const int32 PagesBefore = Blueprint->UbergraphPages.Num();

	FToolResult Existing;
	UEdGraph* EventGraph = FGraphCreate::EnsureEventGraph(Blueprint, TEXT(""), Existing);
	ASSERT_NE(EventGraph, nullptr);
	EXPECT_EQ(EventGraph->GetName(), TEXT("EventGraph"));
	EXPECT_EQ(Existing.GetSuccessMessages().Num(), 0);
	EXPECT_EQ(FGraphCreate::EnsureEventGraph(Blueprint, TEXT("eventgraph"), Existing), EventGraph);

	FToolResult Made;
	UEdGraph* Combat = FGraphCreate::EnsureEventGraph(Blueprint, TEXT("Combat"), Made);
	ASSERT_NE(Combat, nullptr);
	EXPECT_EQ(Made.GetSuccessMessages(), TArray<FString>{TEXT("Created event graph 'Combat'")});
	EXPECT_EQ(Blueprint->UbergraphPages.Num(), PagesBefore + 1);
	EXPECT_EQ(FGraphCreate::EnsureEventGraph(Blueprint, TEXT("Combat"), Made), Combat);
	EXPECT_EQ(Blueprint->UbergraphPages.Num(), PagesBefore + 1);

	FToolResult Null;
	EXPECT_EQ(FGraphCreate::EnsureEventGraph(nullptr, TEXT("EventGraph"), Null), nullptr);
	EXPECT_EQ(Null.GetErrorMessages(), TArray<FString>{TEXT("Invalid Blueprint when ensuring EventGraph")});

	// The signature helpers refuse what they cannot work on, with their own texts.
	UEdGraph* Graph = nullptr;
	FToolResult Refusals;
	EXPECT_EQ(FGraphCreate::CreateFunctionGraph(nullptr, TEXT("F"), Graph, Refusals, false), FGraphCreate::EFunctionGraphOutcome::Failed);
	EXPECT_EQ(FGraphCreate::CreateFunctionGraph(Blueprint, TEXT(" "), Graph, Refusals, false), FGraphCreate::EFunctionGraphOutcome::Failed);
	EXPECT_FALSE(FGraphCreate::CreateDelegateSignatureGraph(Blueprint, TEXT(""), Graph, Refusals));
	EXPECT_FALSE(FGraphCreate::ConfigureGraphSignature(Blueprint, nullptr, FJsonObject(), Refusals));
	EXPECT_FALSE(FGraphCreate::ConfigureGraphSignature(Blueprint, EventGraph, FJsonObject(), Refusals));
	EXPECT_EQ(Refusals.GetErrorMessages(), (TArray<FString>{TEXT("Invalid Blueprint or FunctionName"), TEXT("Invalid Blueprint or FunctionName"),
		TEXT("Invalid Blueprint or DelegateName"), TEXT("Invalid parameters for ConfigureGraphSignature"), TEXT("No FunctionEntry node found in function graph")}));
}

TEST_F(LifecycleTools, EveryAssetKindCompilesInOneBatch)
{
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Batch/BP_Actor")), nullptr);
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Batch/ABP_Anim"), TEXT("/Script/Engine.AnimInstance")), nullptr);
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Batch/WBP_Widget"), TEXT("/Script/UMG.UserWidget")), nullptr);
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Batch/BTT_Task"), TEXT("/Script/AIModule.BTTask_BlueprintBase")), nullptr);
	ASSERT_NE(CreateBlueprint(TEXT("/Game/Batch/BP_Child"), TEXT("/Game/Batch/BP_Actor"), TEXT("blueprint")), nullptr);
	const FToolResult Result = Call(TEXT("compile_blueprint"), TEXT(R"({"blueprint_paths": ["/Game/Batch/BP_Actor", "/Game/Batch/ABP_Anim.ABP_Anim",
		"/Game/Batch/WBP_Widget", "BTT_Task", "/Game/Batch/BP_Child.BP_Child_C"]})"));
	EXPECT_FALSE(Result.HasFailed()) << Describe(Result);
	EXPECT_EQ(Result.GetSuccessMessages(), TArray<FString>{TEXT("Successfully compiled and saved 5 Blueprint(s)")}) << Describe(Result);
	EXPECT_EQ(Result.GetModifiedObjects().Num(), 5);
}

TEST_F(LifecycleTools, AVariableOfABlueprintsTypeKeepsThatBlueprint)
{
	UBlueprint* Target = CreateBlueprint(TEXT("/Game/Refs/BP_Target"));
	UBlueprint* User = CreateBlueprint(TEXT("/Game/Refs/BP_User"));
	ASSERT_NE(Target, nullptr);
	ASSERT_NE(User, nullptr);
	FEdGraphPinType TargetType;
	TargetType.PinCategory = UEdGraphSchema_K2::PC_Object;
	TargetType.PinSubCategoryObject = Target->GeneratedClass.Get();
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(User, TEXT("Partner"), TargetType));
	const FToolResult Compiled = Call(TEXT("compile_blueprint"), TEXT(R"({"blueprint_paths": ["/Game/Refs/BP_User"]})"));
	ASSERT_FALSE(Compiled.HasFailed()) << Describe(Compiled);

	const FToolResult Refused = Call(TEXT("delete_blueprint"), TEXT(R"({"path": "/Game/Refs/BP_Target"})"));
	ASSERT_EQ(Refused.GetErrorMessages().Num(), 1) << Describe(Refused);
	EXPECT_TRUE(Refused.GetErrorMessages()[0].Contains(TEXT("/Game/Refs/BP_User"))) << Describe(Refused);
	EXPECT_TRUE(FPaths::FileExists(ContentFile(TEXT("Refs/BP_Target.uasset"))));
}
