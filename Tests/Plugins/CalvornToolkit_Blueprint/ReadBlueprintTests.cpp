#include "ReadTestSupport.h"

#include "BlueprintReadUtils.h"
#include "Components/SceneComponent.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "Engine/TimelineTemplate.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "UObject/Interface.h"
#include "CalvornToolkitModule.h"
#include "IToolExecutor.h"
#include "ToolCommand.h"

using namespace ReadTests;

namespace
{
	const TCHAR* const ReaderPath = TEXT("/Game/Readers/BP_Reader");
	const char* const ReaderObjectPath = "/Game/Readers/BP_Reader.BP_Reader";

	FEdGraphPinType MakePinType(FName Category, UObject* SubCategoryObject = nullptr, EPinContainerType Container = EPinContainerType::None)
	{
		FEdGraphPinType Type;
		Type.PinCategory = Category;
		Type.PinSubCategoryObject = SubCategoryObject;
		Type.ContainerType = Container;
		return Type;
	}

	/**
	 * BP_Reader, an actor Blueprint with one of everything a read can list: variables of several kinds and
	 * flags, two components, a function, a macro, a delegate signature, a timeline and an interface; compiled,
	 * and then given one more variable that the compiler has not seen yet.
	 */
	class ReadBlueprint : public FReadFixture
	{
	protected:
		ReadBlueprint()
		{
			Actor = FindClass(TEXT("/Script/Engine.Actor"));
			Blueprint = MakeBlueprint(Actor, TEXT("BP_Reader"));
			if (!Blueprint)
			{
				return;
			}
			AddVariable(TEXT("Health"), MakePinType(UEdGraphSchema_K2::PC_Real), TEXT("100.0"), CPF_Edit | CPF_BlueprintVisible | CPF_Net);
			SetCategory(TEXT("Health"), TEXT("Stats"));
			FBlueprintEditorUtils::SetBlueprintVariableMetaData(Blueprint, TEXT("Health"), nullptr, FBlueprintMetadata::MD_Tooltip, TEXT("Hit points"));
			AddVariable(TEXT("Score"), MakePinType(UEdGraphSchema_K2::PC_Int), TEXT("7"), CPF_Edit | CPF_BlueprintVisible | CPF_DisableEditOnInstance | CPF_Net | CPF_RepNotify);
			FBlueprintEditorUtils::SetBlueprintVariableRepNotifyFunc(Blueprint, TEXT("Score"), TEXT("OnRep_Score"));
			SetCategory(TEXT("Score"), TEXT(""));
			AddVariable(TEXT("Labels"), MakePinType(UEdGraphSchema_K2::PC_Name, nullptr, EPinContainerType::Array), FString(), CPF_Edit | CPF_BlueprintVisible);
			AddVariable(TEXT("Target"), MakePinType(UEdGraphSchema_K2::PC_Object, Actor), FString(), CPF_Edit | CPF_BlueprintVisible);
			FBlueprintEditorUtils::SetBlueprintVariableMetaData(Blueprint, TEXT("Target"), nullptr, FBlueprintMetadata::MD_ExposeOnSpawn, TEXT("TRUE"));
			FBlueprintEditorUtils::SetBlueprintVariableMetaData(Blueprint, TEXT("Target"), nullptr, FBlueprintMetadata::MD_Private, TEXT("no"));
			AddVariable(TEXT("Saved"), MakePinType(UEdGraphSchema_K2::PC_Boolean), TEXT("true"), CPF_Edit | CPF_BlueprintVisible | CPF_BlueprintReadOnly | CPF_SaveGame | CPF_Config);

			USimpleConstructionScript* SCS = Blueprint->SimpleConstructionScript;
			USCS_Node* Root = SCS->CreateNode(FindClass(TEXT("/Script/Engine.SceneComponent")), TEXT("Root"));
			SCS->AddNode(Root);
			USCS_Node* Mesh = SCS->CreateNode(FindClass(TEXT("/Script/Engine.StaticMeshComponent")), TEXT("Mesh"));
			Root->AddChildNode(Mesh);

			UEdGraph* Function = FBlueprintEditorUtils::CreateNewGraph(Blueprint, TEXT("ComputeDamage"), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
			FBlueprintEditorUtils::AddFunctionGraph<UClass>(Blueprint, Function, true, nullptr);
			UEdGraph* Macro = FBlueprintEditorUtils::CreateNewGraph(Blueprint, TEXT("Repeat"), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
			FBlueprintEditorUtils::AddMacroGraph(Blueprint, Macro, true, nullptr);
			UEdGraph* Delegate = FBlueprintEditorUtils::CreateNewGraph(Blueprint, TEXT("OnDamaged"), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
			Blueprint->DelegateSignatureGraphs.Add(Delegate);

			UTimelineTemplate* Fade = FBlueprintEditorUtils::AddNewTimeline(Blueprint, TEXT("Fade"));
			if (Fade)
			{
				Fade->TimelineLength = 2.5f;
				Fade->bLoop = true;
			}

			FBPInterfaceDescription& Interface = Blueprint->ImplementedInterfaces.AddDefaulted_GetRef();
			Interface.Interface = FindClass(TEXT("/Script/Engine.BlendableInterface"));
			Interface.Graphs.Add(FBlueprintEditorUtils::CreateNewGraph(Blueprint, TEXT("BlendGraph"), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass()));

			FKismetEditorUtilities::CompileBlueprint(Blueprint);
			AddVariable(TEXT("Pending"), MakePinType(UEdGraphSchema_K2::PC_String), TEXT("hello"), CPF_Edit | CPF_BlueprintVisible);
		}

		void AddVariable(const TCHAR* Name, const FEdGraphPinType& Type, const FString& Default, uint64 Flags)
		{
			ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, Name, Type, Default)) << U8(Name);
			const int32 Index = FBlueprintEditorUtils::FindNewVariableIndex(Blueprint, Name);
			ASSERT_NE(Index, INDEX_NONE);
			Blueprint->NewVariables[Index].PropertyFlags = Flags;
		}

		void SetCategory(const TCHAR* Name, const TCHAR* Category)
		{
			const int32 Index = FBlueprintEditorUtils::FindNewVariableIndex(Blueprint, Name);
			ASSERT_NE(Index, INDEX_NONE);
			Blueprint->NewVariables[Index].Category = FText::FromString(Category);
		}

		/** ReadBlueprint with a JSON request; the document parsed, "{}" answers as an empty object. */
		TSharedPtr<FJsonObject> Read(const TCHAR* Tool, const FString& ExtraJson, Calvorn::FToolResult& Result)
		{
			TSharedPtr<FJsonObject> Options = Request(Tool, ExtraJson);
			if (!Options->HasField(TEXT("path")))
			{
				Options->SetStringField(TEXT("path"), ReaderPath);
			}
			LastText = FBlueprintReadUtils::ReadBlueprint(Options, Result);
			return ParseJson(LastText);
		}

		TSharedPtr<FJsonObject> Read(const TCHAR* Tool, const FString& ExtraJson = TEXT("{}"))
		{
			Calvorn::FToolResult Result;
			TSharedPtr<FJsonObject> Document = Read(Tool, ExtraJson, Result);
			EXPECT_EQ(Result.GetErrorMessages().Num(), 0) << Describe(Result);
			return Document;
		}

		/** A tool call through the executor, as a client makes it; the tool modules are started on first use. */
		Calvorn::FToolResult Call(const TCHAR* Tool, const TCHAR* ParametersJson)
		{
			if (!bModulesStarted)
			{
				FModuleManager::Get().LoadModule(TEXT("CalvornToolkit"));
				FModuleManager::Get().LoadModule(TEXT("CalvornToolkit_Blueprint"));
				bModulesStarted = true;
			}
			const TSharedPtr<Calvorn::IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();
			if (!Executor.IsValid())
			{
				ADD_FAILURE() << "no tool executor";
				return Calvorn::FToolResult();
			}
			return Executor->ExecuteCommand(Calvorn::FToolCommand(TEXT("read"), Tool, ParametersJson));
		}

		~ReadBlueprint() override
		{
			if (bModulesStarted)
			{
				FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit_Blueprint"));
				FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit"));
			}
		}

		UClass* Actor = nullptr;
		UBlueprint* Blueprint = nullptr;
		FString LastText;
		bool bModulesStarted = false;
	};
}

TEST_F(ReadBlueprint, ASchemaReadNamesEverySectionInItsOrder)
{
	ASSERT_NE(Blueprint, nullptr);
	const TSharedPtr<FJsonObject> Document = Read(TEXT("read_blueprint_schema"));
	EXPECT_EQ(Keys(Document), (std::vector<std::string>{"path", "name", "class_path", "parent_class", "interfaces", "variables", "components", "functions", "macros", "delegates", "graphs", "timelines"}));
	EXPECT_EQ(Str(Document, TEXT("path")), U8(ReaderPath));
	EXPECT_EQ(Str(Document, TEXT("name")), ReaderObjectPath);
	EXPECT_EQ(Str(Document, TEXT("class_path")), "/Game/Readers/BP_Reader.BP_Reader_C");
	const TSharedPtr<FJsonObject> Parent = Obj(Document, TEXT("parent_class"));
	EXPECT_EQ(Keys(Parent), (std::vector<std::string>{"type", "name"}));
	EXPECT_EQ(Str(Parent, TEXT("type")), "native");
	EXPECT_EQ(Str(Parent, TEXT("name")), "/Script/Engine.Actor");

	// Names without detail: no default values, no graphs' nodes, no timeline settings.
	EXPECT_EQ(Keys(Named(Document, TEXT("interfaces"), TEXT("BlendableInterface"))), (std::vector<std::string>{"name", "class", "graphs"}));
	EXPECT_EQ(Keys(Objects(Named(Document, TEXT("interfaces"), TEXT("BlendableInterface")), TEXT("graphs"))[0]), (std::vector<std::string>{"name", "class", "schema", "hierarchy_depth", "graph_path"}));
	EXPECT_EQ(Keys(Named(Document, TEXT("variables"), TEXT("Health"))), (std::vector<std::string>{"name", "type", "replication", "category", "tooltip", "instance_editable", "save_game", "blueprint_read_only", "config"}));
	EXPECT_EQ(Keys(Named(Document, TEXT("components"), TEXT("Mesh"))), (std::vector<std::string>{"name", "class_name"}));
	EXPECT_EQ(Keys(Named(Document, TEXT("functions"), TEXT("ComputeDamage"))), (std::vector<std::string>{"name"}));
	EXPECT_EQ(Keys(Named(Document, TEXT("macros"), TEXT("Repeat"))), (std::vector<std::string>{"name"}));
	EXPECT_EQ(Keys(Named(Document, TEXT("delegates"), TEXT("OnDamaged"))), (std::vector<std::string>{"name"}));
	EXPECT_EQ(Keys(Named(Document, TEXT("timelines"), TEXT("Fade"))), (std::vector<std::string>{"name"}));

	// Inherited events and callables show their kind and owner.
	const TSharedPtr<FJsonObject> BeginPlay = Named(Document, TEXT("functions"), TEXT("ReceiveBeginPlay"));
	EXPECT_EQ(Keys(BeginPlay), (std::vector<std::string>{"name", "owner_class", "function_type"}));
	EXPECT_EQ(Str(BeginPlay, TEXT("owner_class")), "Actor");
	EXPECT_EQ(Str(BeginPlay, TEXT("function_type")), "event");
	EXPECT_EQ(Str(Named(Document, TEXT("functions"), TEXT("K2_GetActorLocation")), TEXT("function_type")), "function");

	// One element per event graph page, each an event flow document.
	const TArray<TSharedPtr<FJsonObject>> Graphs = Objects(Document, TEXT("graphs"));
	ASSERT_EQ(Graphs.Num(), Blueprint->UbergraphPages.Num());
	EXPECT_EQ(Keys(Graphs[0]), (std::vector<std::string>{"name", "class", "schema", "event_flows"}));
}

TEST_F(ReadBlueprint, VariablesShowCompiledThenUncompiledAndNeverComponents)
{
	ASSERT_NE(Blueprint, nullptr);
	const TSharedPtr<FJsonObject> Document = Read(TEXT("read_blueprint_schema"));
	const std::vector<std::string> Names = Column(Document, TEXT("variables"), TEXT("name"));
	auto Position = [&Names](const char* Name) { return std::find(Names.begin(), Names.end(), std::string(Name)) - Names.begin(); };
	for (const char* Name : {"Health", "Score", "Labels", "Target", "Saved", "Pending", "InitialLifeSpan"})
	{
		EXPECT_LT(Position(Name), static_cast<std::ptrdiff_t>(Names.size())) << Name;
	}
	EXPECT_EQ(Position("Pending"), static_cast<std::ptrdiff_t>(Names.size()) - 1) << "a variable added since the compile comes last";
	EXPECT_EQ(Position("Mesh"), static_cast<std::ptrdiff_t>(Names.size()));
	EXPECT_EQ(Position("Root"), static_cast<std::ptrdiff_t>(Names.size()));

	// An inherited variable has no description: its name and type only.
	EXPECT_EQ(Keys(Named(Document, TEXT("variables"), TEXT("InitialLifeSpan"))), (std::vector<std::string>{"name", "type"}));
}

TEST_F(ReadBlueprint, TheVariableToolGivesDefaultsReplicationAndFlags)
{
	ASSERT_NE(Blueprint, nullptr);
	const TSharedPtr<FJsonObject> Document = Read(TEXT("read_blueprint_variable"), TEXT("{\"variable_name\": [\"health\", \"Score\", \"Target\", \"Saved\", \"Pending\", \"Labels\", \"InitialLifeSpan\"]}"));
	EXPECT_EQ(Keys(Document), (std::vector<std::string>{"path", "variables"}));

	const TSharedPtr<FJsonObject> Health = Named(Document, TEXT("variables"), TEXT("Health"));
	EXPECT_EQ(Keys(Health), (std::vector<std::string>{"name", "type", "default_variable_value", "replication", "category", "tooltip", "instance_editable", "save_game", "blueprint_read_only", "config"}));
	EXPECT_EQ(Str(Obj(Health, TEXT("type")), TEXT("category")), "real");
	EXPECT_EQ(Str(Health, TEXT("default_variable_value")), "100.000000");
	EXPECT_EQ(Keys(Obj(Health, TEXT("replication"))), (std::vector<std::string>{"mode"}));
	EXPECT_EQ(Str(Obj(Health, TEXT("replication")), TEXT("mode")), "replicated");
	EXPECT_EQ(Str(Health, TEXT("category")), "Stats");
	EXPECT_EQ(Str(Health, TEXT("tooltip")), "Hit points");
	EXPECT_TRUE(Health->GetBoolField(TEXT("instance_editable")));
	EXPECT_FALSE(Health->GetBoolField(TEXT("save_game")));
	EXPECT_FALSE(Health->GetBoolField(TEXT("blueprint_read_only")));
	EXPECT_FALSE(Health->GetBoolField(TEXT("config")));

	const TSharedPtr<FJsonObject> Score = Named(Document, TEXT("variables"), TEXT("Score"));
	EXPECT_EQ(Str(Score, TEXT("default_variable_value")), "7");
	EXPECT_EQ(Keys(Obj(Score, TEXT("replication"))), (std::vector<std::string>{"mode", "notify_function"}));
	EXPECT_EQ(Str(Obj(Score, TEXT("replication")), TEXT("mode")), "rep_notify");
	EXPECT_EQ(Str(Obj(Score, TEXT("replication")), TEXT("notify_function")), "OnRep_Score");
	EXPECT_FALSE(Score->GetBoolField(TEXT("instance_editable")));
	EXPECT_FALSE(Score->HasField(TEXT("category"))) << "an empty category is left out";

	const TSharedPtr<FJsonObject> Target = Named(Document, TEXT("variables"), TEXT("Target"));
	EXPECT_TRUE(Target->GetBoolField(TEXT("expose_on_spawn"))) << "metadata compares without case";
	EXPECT_FALSE(Target->GetBoolField(TEXT("private")));
	EXPECT_EQ(Str(Obj(Target, TEXT("replication")), TEXT("mode")), "none");
	EXPECT_FALSE(Health->HasField(TEXT("expose_on_spawn")));

	const TSharedPtr<FJsonObject> Saved = Named(Document, TEXT("variables"), TEXT("Saved"));
	EXPECT_TRUE(Saved->GetBoolField(TEXT("save_game")));
	EXPECT_TRUE(Saved->GetBoolField(TEXT("blueprint_read_only")));
	EXPECT_TRUE(Saved->GetBoolField(TEXT("config")));
	EXPECT_EQ(Str(Saved, TEXT("default_variable_value")), "True");

	const TSharedPtr<FJsonObject> Labels = Named(Document, TEXT("variables"), TEXT("Labels"));
	EXPECT_EQ(Str(Obj(Labels, TEXT("type")), TEXT("container_type")), "array");

	// Not compiled yet: everything from the description, the default as the user typed it.
	const TSharedPtr<FJsonObject> Pending = Named(Document, TEXT("variables"), TEXT("Pending"));
	EXPECT_EQ(Str(Pending, TEXT("default_variable_value")), "hello");
	EXPECT_EQ(Str(Obj(Pending, TEXT("type")), TEXT("category")), "string");
	EXPECT_EQ(Str(Obj(Pending, TEXT("replication")), TEXT("mode")), "none");

	const TSharedPtr<FJsonObject> Inherited = Named(Document, TEXT("variables"), TEXT("InitialLifeSpan"));
	EXPECT_EQ(Keys(Inherited), (std::vector<std::string>{"name", "type", "default_variable_value"}));
}

TEST_F(ReadBlueprint, ComponentsFunctionsAndGraphItemsInDepth)
{
	ASSERT_NE(Blueprint, nullptr);
	const TSharedPtr<FJsonObject> Components = Read(TEXT("read_blueprint_component"), TEXT("{\"component_name\": [\"Mesh\", \"Root\"]}"));
	EXPECT_EQ(Column(Components, TEXT("components"), TEXT("name")), (std::vector<std::string>{"Root", "Mesh"}));
	const TSharedPtr<FJsonObject> Mesh = Named(Components, TEXT("components"), TEXT("Mesh"));
	EXPECT_EQ(Keys(Mesh), (std::vector<std::string>{"name", "class_name", "display_name", "group_name", "is_scene_component", "is_editor_only", "is_active"}));
	EXPECT_EQ(Str(Mesh, TEXT("class_name")), "StaticMeshComponent");
	EXPECT_EQ(Str(Mesh, TEXT("display_name")), U8(FindClass(TEXT("/Script/Engine.StaticMeshComponent"))->GetDisplayNameText().ToString()));
	EXPECT_TRUE(Mesh->GetBoolField(TEXT("is_scene_component")));
	EXPECT_FALSE(Mesh->GetBoolField(TEXT("is_editor_only")));
	EXPECT_FALSE(Mesh->GetBoolField(TEXT("is_active"))) << "a template is never active";

	const TSharedPtr<FJsonObject> Functions = Read(TEXT("read_blueprint_function"), TEXT("{\"function_name\": [\"ComputeDamage\", \"K2_GetActorLocation\", \"ReceiveTick\"]}"));
	EXPECT_EQ(Column(Functions, TEXT("functions"), TEXT("name")), (std::vector<std::string>{"ComputeDamage", "K2_GetActorLocation", "ReceiveTick"}));
	const TSharedPtr<FJsonObject> Own = Named(Functions, TEXT("functions"), TEXT("ComputeDamage"));
	EXPECT_EQ(Keys(Own), (std::vector<std::string>{"name", "ed_graph"}));
	EXPECT_EQ(Str(Obj(Own, TEXT("ed_graph")), TEXT("name")), "ComputeDamage");
	EXPECT_TRUE(Obj(Own, TEXT("ed_graph"))->HasField(TEXT("nodes")));
	const TSharedPtr<FJsonObject> Location = Named(Functions, TEXT("functions"), TEXT("K2_GetActorLocation"));
	EXPECT_EQ(Keys(Location), (std::vector<std::string>{"name", "owner_class", "function_type", "return_type", "function_flags_enum", "is_pure"}));
	EXPECT_EQ(Keys(Obj(Location, TEXT("return_type"))), (std::vector<std::string>{"name", "type"}));
	EXPECT_EQ(Str(Obj(Location, TEXT("return_type")), TEXT("name")), "ReturnValue");
	EXPECT_EQ(Str(Obj(Obj(Location, TEXT("return_type")), TEXT("type")), TEXT("category")), "struct");
	EXPECT_TRUE(Location->GetBoolField(TEXT("is_pure")));
	const UFunction* LocationFunction = FindFunction(TEXT("/Script/Engine.Actor"), TEXT("K2_GetActorLocation"));
	EXPECT_EQ(Location->GetNumberField(TEXT("function_flags_enum")), static_cast<double>(static_cast<uint32>(LocationFunction->FunctionFlags)));
	const TSharedPtr<FJsonObject> Tick = Named(Functions, TEXT("functions"), TEXT("ReceiveTick"));
	EXPECT_EQ(Str(Tick, TEXT("return_type")), "void");
	EXPECT_EQ(Column(Tick, TEXT("in_params"), TEXT("name")), (std::vector<std::string>{"DeltaSeconds"}));
	EXPECT_FALSE(Tick->HasField(TEXT("out_params")));

	const TSharedPtr<FJsonObject> Macro = Named(Read(TEXT("read_blueprint_macro"), TEXT("{\"macro_name\": [\"Repeat\"]}")), TEXT("macros"), TEXT("Repeat"));
	EXPECT_EQ(Keys(Macro), (std::vector<std::string>{"name", "ed_graph"}));
	const TSharedPtr<FJsonObject> Delegate = Named(Read(TEXT("read_blueprint_delegate"), TEXT("{\"delegate_name\": [\"OnDamaged\"]}")), TEXT("delegates"), TEXT("OnDamaged"));
	EXPECT_EQ(Keys(Delegate), (std::vector<std::string>{"name", "ed_graph"}));
	const TSharedPtr<FJsonObject> Fade = Named(Read(TEXT("read_blueprint_timeline"), TEXT("{\"timeline_name\": [\"fade\"]}")), TEXT("timelines"), TEXT("Fade"));
	EXPECT_EQ(Keys(Fade), (std::vector<std::string>{"name", "length", "auto_play", "loop"}));
	EXPECT_EQ(Fade->GetNumberField(TEXT("length")), 2.5);
	EXPECT_FALSE(Fade->GetBoolField(TEXT("auto_play")));
	EXPECT_TRUE(Fade->GetBoolField(TEXT("loop")));
	const TSharedPtr<FJsonObject> Interface = Named(Read(TEXT("read_blueprint_interface"), TEXT("{\"interface_name\": [\"BlendableInterface\"]}")), TEXT("interfaces"), TEXT("BlendableInterface"));
	EXPECT_EQ(Str(Interface, TEXT("class")), "/Script/Engine.BlendableInterface");
	EXPECT_EQ(Column(Interface, TEXT("graphs"), TEXT("name")), (std::vector<std::string>{"BlendGraph"}));
	EXPECT_TRUE(Objects(Interface, TEXT("graphs"))[0]->HasField(TEXT("nodes")));
}

TEST_F(ReadBlueprint, MissingItemsBecomeStatusEntries)
{
	ASSERT_NE(Blueprint, nullptr);
	struct FCase
	{
		const TCHAR* Tool;
		const TCHAR* Extra;
		const TCHAR* Section;
		std::vector<std::string> Names;
		std::vector<std::string> Statuses;
	};
	const FCase Cases[] = {
		{TEXT("read_blueprint_component"), TEXT("{\"component_name\": [\"Lamp\"]}"), TEXT("components"), {"Lamp"}, {"not_found"}},
		{TEXT("read_blueprint_component"), TEXT("{\"component_name\": [\"Lamp\"], \"finalize_modifications\": true}"), TEXT("components"), {"Lamp"}, {"deleted"}},
		{TEXT("read_blueprint_variable"), TEXT("{\"variable_name\": [\"Health\", \"Mana\", 4]}"), TEXT("variables"), {"Health", "Mana"}, {"<absent>", "not_found"}},
		{TEXT("read_blueprint_function"), TEXT("{\"function_name\": [\"Fly\"], \"finalize_modifications\": false}"), TEXT("functions"), {"Fly"}, {"not_found"}},
		{TEXT("read_blueprint_timeline"), TEXT("{\"timeline_name\": [\"Fade_Template\"]}"), TEXT("timelines"), {"Fade_Template"}, {"not_found"}},
		{TEXT("read_blueprint_macro"), TEXT("{\"macro_name\": [\"Loop\"], \"finalize_modifications\": true}"), TEXT("macros"), {"Loop"}, {"deleted"}},
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Extra));
		const TSharedPtr<FJsonObject> Document = Read(Case.Tool, Case.Extra);
		EXPECT_EQ(Column(Document, Case.Section, TEXT("name")), Case.Names);
		EXPECT_EQ(Column(Document, Case.Section, TEXT("status")), Case.Statuses);
		const TArray<TSharedPtr<FJsonObject>> Items = Objects(Document, Case.Section);
		ASSERT_GT(Items.Num(), 0);
		EXPECT_EQ(Keys(Items.Last()), (std::vector<std::string>{"name", "status"}));
	}
}

TEST_F(ReadBlueprint, RequestFailuresReturnAnEmptyDocument)
{
	ASSERT_NE(Blueprint, nullptr);
	struct FCase
	{
		const TCHAR* Tool;
		const TCHAR* Extra;
		std::vector<std::string> Errors;
	};
	const FCase Cases[] = {
		{TEXT("read_blueprint_variable"), TEXT("{\"variable_name\": []}"), {"Field 'variable_name' array is empty"}},
		{TEXT("read_blueprint_variable"), TEXT("{\"variable_name\": [1, 2]}"), {"Field 'variable_name' array is empty"}},
		{TEXT("read_blueprint_component"), TEXT("{\"component_name\": \"Mesh\"}"), {"Field 'component_name' array is empty"}},
		{nullptr, TEXT("{}"), {"Missing required field 'read_tool'"}},
		{TEXT("read_blueprint_schema"), TEXT("{\"path\": null}"), {"Missing required field 'path'"}},
		{TEXT("read_blueprint_schema"), TEXT("{\"path\": \"/Game/Readers/BP_Gone\"}"), {"Blueprint does not exist: /Game/Readers/BP_Gone", "Cannot read Blueprint. The asset may have been deleted."}},
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Extra));
		Calvorn::FToolResult Result;
		Read(Case.Tool, Case.Extra, Result);
		EXPECT_EQ(U8(LastText), "{}");
		EXPECT_EQ(U8s(Result.GetErrorMessages()), Case.Errors);
	}

	// Another tool's filter is not looked at.
	Calvorn::FToolResult Result;
	Read(TEXT("read_blueprint_macro"), TEXT("{\"variable_name\": []}"), Result);
	EXPECT_TRUE(Result.WasSuccessful()) << Describe(Result);
}

TEST_F(ReadBlueprint, ABlueprintParentIsNamedByAssetAndAnUncompiledBlueprintIsRefused)
{
	ASSERT_NE(Blueprint, nullptr);
	UBlueprint* Child = MakeBlueprint(Blueprint->GeneratedClass, TEXT("BP_ReaderChild"));
	ASSERT_NE(Child, nullptr);
	const TSharedPtr<FJsonObject> Document = Read(TEXT("read_blueprint_schema"), TEXT("{\"path\": \"/Game/Readers/BP_ReaderChild\"}"));
	const TSharedPtr<FJsonObject> Parent = Obj(Document, TEXT("parent_class"));
	EXPECT_EQ(Str(Parent, TEXT("type")), "blueprint");
	EXPECT_EQ(Str(Parent, TEXT("name")), "BP_Reader");
	// The parent's variables are inherited here: name and type, no description.
	EXPECT_EQ(Keys(Named(Document, TEXT("variables"), TEXT("Health"))), (std::vector<std::string>{"name", "type"}));

	Child->ParentClass = nullptr;
	const TSharedPtr<FJsonObject> Orphan = Read(TEXT("read_blueprint_schema"), TEXT("{\"path\": \"/Game/Readers/BP_ReaderChild\"}"));
	EXPECT_TRUE(Orphan->HasTypedField(TEXT("parent_class"), EJson::Null)) << U8(LastText);

	Child->GeneratedClass = nullptr;
	Calvorn::FToolResult Result;
	Read(TEXT("read_blueprint_schema"), TEXT("{\"path\": \"/Game/Readers/BP_ReaderChild\"}"), Result);
	EXPECT_EQ(U8(LastText), "{}");
	EXPECT_EQ(U8s(Result.GetErrorMessages()), (std::vector<std::string>{"Loaded asset is not a Blueprint: /Game/Readers/BP_ReaderChild"}));
}

TEST_F(ReadBlueprint, OperationsAnswerWithTheirOwnMessages)
{
	ASSERT_NE(Blueprint, nullptr);
	struct FCase
	{
		const TCHAR* Tool;
		const TCHAR* Request;
		std::vector<std::string> Errors;
		std::vector<std::string> Warnings;
		std::vector<std::string> Successes;
		bool bContent;
	};
	const std::string Where = ReaderObjectPath;
	const std::string Gone = "/Game/Readers/BP_Gone.BP_Gone";
	const FCase Cases[] = {
		{TEXT("read_blueprint_schema"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\"}"), {}, {}, {"Successfully read schema for Blueprint: BP_Reader"}, true},
		{TEXT("read_blueprint_schema"), TEXT("{}"), {"Missing required field 'path'"}, {}, {}, false},
		{TEXT("read_blueprint_schema"), TEXT("{\"path\": \"/Game/Readers/BP_Gone\"}"), {"Blueprint does not exist: " + Gone, "Cannot read schema for non-existent Blueprint. The asset may have been deleted."}, {}, {}, false},
		{TEXT("read_blueprint_variable"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"variable_name\": \"Health\"}"), {}, {}, {"Successfully read variable 'Health' from Blueprint: BP_Reader"}, true},
		{TEXT("read_blueprint_variable"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\"}"), {"Missing required field 'variable_name'"}, {}, {}, false},
		{TEXT("read_blueprint_variable"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"variable_name\": \"Mana\"}"), {}, {"'Mana' variable does not exist in Blueprint: " + Where}, {}, true},
		{TEXT("read_blueprint_variable"), TEXT("{\"path\": \"/Game/Readers/BP_Gone\", \"variable_name\": \"Health\"}"), {"Blueprint does not exist: " + Gone, "Cannot read Blueprint. The asset may have been deleted.", "Failed to read variable 'Health' at path: " + Gone}, {}, {}, false},
		{TEXT("read_blueprint_component"), TEXT("{\"path\": \"/Game/Readers/BP_Reader.BP_Reader_C\", \"component_name\": \"Mesh\"}"), {}, {}, {"Successfully read component 'Mesh' from Blueprint: BP_Reader"}, true},
		{TEXT("read_blueprint_component"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"component_name\": \"Lamp\"}"), {}, {"'Lamp' component does not exist in Blueprint: " + Where}, {}, true},
		{TEXT("read_blueprint_component"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\"}"), {"Missing required field 'component_name'"}, {}, {}, false},
		{TEXT("read_blueprint_function"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"function_name\": \"ComputeDamage\"}"), {}, {}, {"Successfully read function 'ComputeDamage' from Blueprint: BP_Reader"}, true},
		{TEXT("read_blueprint_function"), TEXT("{\"path\": \"/Game/Readers/BP_Gone\", \"function_name\": \"ComputeDamage\"}"), {"Blueprint does not exist: " + Gone, "Cannot read Blueprint. The asset may have been deleted.", "Failed to read function 'ComputeDamage' from Blueprint: " + Gone}, {}, {}, false},
		{TEXT("read_blueprint_interface"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"interface_name\": \"BlendableInterface\"}"), {}, {}, {"Successfully read interface 'BlendableInterface' from Blueprint: BP_Reader"}, true},
		{TEXT("read_blueprint_interface"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"interface_name\": \"Nope\"}"), {}, {"'Nope' interface does not exist in Blueprint: " + Where}, {}, true},
		{TEXT("read_blueprint_macro"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"macro_name\": \"Repeat\"}"), {}, {}, {"Successfully read macro 'Repeat' from Blueprint: BP_Reader"}, true},
		{TEXT("read_blueprint_macro"), TEXT("{\"path\": \"/Game/Readers/BP_Gone\", \"macro_name\": \"Repeat\"}"), {"Blueprint does not exist: " + Gone, "Cannot read Blueprint. The asset may have been deleted.", "Failed to read macro 'Repeat' from Blueprint: " + Gone}, {}, {}, false},
		{TEXT("read_blueprint_delegate"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"delegate_name\": \"OnDamaged\"}"), {}, {}, {"Successfully read delegate 'OnDamaged' from Blueprint: BP_Reader"}, true},
		{TEXT("read_blueprint_delegate"), TEXT("{\"path\": \"/Game/Readers/BP_Gone\", \"delegate_name\": \"OnDamaged\"}"), {"Blueprint does not exist: " + Gone, "Cannot read Blueprint. The asset may have been deleted.", "Failed to read delegate 'OnDamaged' at path: " + Gone}, {}, {}, false},
		{TEXT("read_blueprint_timeline"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"timeline_name\": \"Fade\"}"), {}, {}, {"Successfully read timeline 'Fade' from Blueprint: BP_Reader"}, true},
		{TEXT("read_blueprint_timeline"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"timeline_name\": \"Blink\"}"), {}, {"'Blink' timeline does not exist in Blueprint: " + Where}, {}, true},
		{TEXT("read_blueprint_timeline"), TEXT("{\"path\": \"/Game/Readers/BP_Gone\", \"timeline_name\": \"Fade\"}"), {"Blueprint does not exist: " + Gone, "Cannot read Blueprint. The asset may have been deleted.", "Failed to read timeline 'Fade' at path: " + Gone}, {}, {}, false},
		{TEXT("read_blueprint_event"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"graph_name\": \"EventGraph\", \"event_name\": \"BeginPlay\"}"), {}, {}, {"Successfully read event 'BeginPlay' from graph 'EventGraph' in Blueprint: BP_Reader"}, true},
		// A missing event stays visible in the content only: the flows stand inside the graphs.
		{TEXT("read_blueprint_event"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"graph_name\": \"Nowhere\", \"event_name\": \"Jump\"}"), {}, {}, {"Successfully read event 'Jump' from graph 'Nowhere' in Blueprint: BP_Reader"}, true},
		{TEXT("read_blueprint_event"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"event_name\": \"Jump\"}"), {"Missing required field 'graph_name'"}, {}, {}, false},
		{TEXT("read_blueprint_event"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"graph_name\": \"EventGraph\"}"), {"Missing required field 'event_name'"}, {}, {}, false},
		{TEXT("read_blueprint_event"), TEXT("{\"path\": \"/Game/Readers/BP_Gone\", \"graph_name\": \"EventGraph\", \"event_name\": \"Jump\"}"), {"Blueprint does not exist: " + Gone, "Cannot read Blueprint. The asset may have been deleted.", "Failed to read event 'Jump' from graph 'EventGraph' in Blueprint: " + Gone}, {}, {}, false},
		{TEXT("read_blueprint_widget_tree"), TEXT("{}"), {"Missing required field 'path'"}, {}, {}, false},
		{TEXT("read_blueprint_widget_tree"), TEXT("{\"path\": \"/Game/Readers/BP_Gone\"}"), {"Blueprint does not exist: " + Gone, "Cannot read Blueprint. The asset may have been deleted.", "Failed to read widget_tree at path: " + Gone}, {}, {}, false},
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Request));
		const Calvorn::FToolResult Result = Call(Case.Tool, Case.Request);
		EXPECT_EQ(U8s(Result.GetErrorMessages()), Case.Errors);
		EXPECT_EQ(U8s(Result.GetWarningMessages()), Case.Warnings);
		EXPECT_EQ(U8s(Result.GetSuccessMessages()), Case.Successes);
		FString Content;
		EXPECT_EQ(Result.GetDatas()->TryGetStringField(TEXT("content"), Content), Case.bContent);
		if (Case.bContent)
		{
			const TSharedPtr<FJsonObject> Document = ParseJson(Content);
			ASSERT_TRUE(Document.IsValid());
			EXPECT_EQ(Str(Document, TEXT("path")), Where) << "the document names the normalised path";
		}
	}
}

TEST_F(ReadBlueprint, TheEventOperationReadsTheFlowItWasAskedFor)
{
	ASSERT_NE(Blueprint, nullptr);
	const Calvorn::FToolResult Result = Call(TEXT("read_blueprint_event"), TEXT("{\"path\": \"/Game/Readers/BP_Reader\", \"graph_name\": \"EventGraph\", \"event_name\": \"Jump\"}"));
	const TSharedPtr<FJsonObject> Document = ParseJson(Result.GetDatas()->GetStringField(TEXT("content")));
	EXPECT_EQ(Keys(Document), (std::vector<std::string>{"path", "graphs"}));
	const TSharedPtr<FJsonObject> Page = Objects(Document, TEXT("graphs"))[0];
	const TArray<TSharedPtr<FJsonObject>> Flows = Objects(Page, TEXT("event_flows"));
	ASSERT_EQ(Flows.Num(), 2);
	EXPECT_EQ(Str(Flows[0], TEXT("event_title")), "Jump");
	EXPECT_EQ(Str(Flows[0], TEXT("status")), "not_found");
	EXPECT_EQ(Str(Flows[1], TEXT("event_title")), "nodes_not_attached_to_an_event");
}

TEST_F(ReadBlueprint, AWidgetTreeReadOfAPlainBlueprintSaysSoAndKeepsTheDocument)
{
	ASSERT_NE(Blueprint, nullptr);
	Calvorn::FToolResult Result;
	const TSharedPtr<FJsonObject> Document = Read(TEXT("read_blueprint_widget_tree"), TEXT("{}"), Result);
	EXPECT_EQ(U8s(Result.GetErrorMessages()), (std::vector<std::string>{"Blueprint at '/Game/Readers/BP_Reader' is not a Widget Blueprint"}));
	EXPECT_EQ(Keys(Document), (std::vector<std::string>{"path"}));
}
