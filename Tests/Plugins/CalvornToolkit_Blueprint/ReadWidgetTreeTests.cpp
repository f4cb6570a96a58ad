#include "ReadTestSupport.h"

#include "Blueprint/UserWidget.h"
#include "Blueprint/WidgetTree.h"
#include "BlueprintReadUtils.h"
#include "CalvornToolkitModule.h"
#include "Components/PanelWidget.h"
#include "IToolExecutor.h"
#include "ToolCommand.h"
#include "WidgetBlueprint.h"

using namespace ReadTests;

namespace
{
	/** WBP_Menu: a check box holding a button holding a label, and WBP_Empty with no root at all. */
	class ReadWidgetTree : public FReadFixture
	{
	protected:
		ReadWidgetTree()
		{
			Menu = Cast<UWidgetBlueprint>(MakeBlueprint(UUserWidget::StaticClass(), TEXT("WBP_Menu")));
			Empty = Cast<UWidgetBlueprint>(MakeBlueprint(UUserWidget::StaticClass(), TEXT("WBP_Empty")));
			if (!Menu || !Menu->WidgetTree)
			{
				return;
			}
			UWidgetTree* Tree = Menu->WidgetTree;
			UPanelWidget* Toggle = Tree->ConstructWidget<UPanelWidget>(FindClass(TEXT("/Script/UMG.CheckBox")), TEXT("Toggle"));
			Button = Tree->ConstructWidget<UPanelWidget>(FindClass(TEXT("/Script/UMG.Button")), TEXT("StartButton"));
			Label = Tree->ConstructWidget(FindClass(TEXT("/Script/UMG.TextBlock")), TEXT("StartLabel"));
			Tree->RootWidget = Toggle;
			Toggle->AddChild(Button);
			Button->AddChild(Label);
			Label->bIsVariable = false;
		}

		~ReadWidgetTree() override
		{
			if (bModulesStarted)
			{
				FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit_Blueprint"));
				FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit"));
			}
		}

		Calvorn::FToolResult Call(const TCHAR* ParametersJson)
		{
			if (!bModulesStarted)
			{
				FModuleManager::Get().LoadModule(TEXT("CalvornToolkit"));
				FModuleManager::Get().LoadModule(TEXT("CalvornToolkit_Blueprint"));
				bModulesStarted = true;
			}
			return FCalvornToolkitModule::GetToolExecutor()->ExecuteCommand(Calvorn::FToolCommand(TEXT("read"), TEXT("read_blueprint_widget_tree"), ParametersJson));
		}

		static TSharedPtr<FJsonObject> Content(const Calvorn::FToolResult& Result)
		{
			FString Text;
			Result.GetDatas()->TryGetStringField(TEXT("content"), Text);
			return ParseJson(Text);
		}

		UWidgetBlueprint* Menu = nullptr;
		UWidgetBlueprint* Empty = nullptr;
		UPanelWidget* Button = nullptr;
		UWidget* Label = nullptr;
		bool bModulesStarted = false;
	};
}

TEST_F(ReadWidgetTree, TheHierarchyIsASkeletonOfNamesClassesAndChildren)
{
	ASSERT_NE(Label, nullptr);
	const TSharedPtr<FJsonObject> Hierarchy = FBlueprintReadUtils::SerializeWidgetHierarchy(Menu);
	EXPECT_EQ(Keys(Hierarchy), (std::vector<std::string>{"root_widget"}));
	const TSharedPtr<FJsonObject> Root = Obj(Hierarchy, TEXT("root_widget"));
	EXPECT_EQ(Keys(Root), (std::vector<std::string>{"name", "class", "is_variable", "children"}));
	EXPECT_EQ(Str(Root, TEXT("name")), "Toggle");
	EXPECT_EQ(Str(Root, TEXT("class")), "CheckBox");
	const TSharedPtr<FJsonObject> Middle = Objects(Root, TEXT("children"))[0];
	EXPECT_EQ(Str(Middle, TEXT("name")), "StartButton");
	const TSharedPtr<FJsonObject> Leaf = Objects(Middle, TEXT("children"))[0];
	EXPECT_EQ(Keys(Leaf), (std::vector<std::string>{"name", "class", "is_variable"})) << "a widget that is no panel has no children key";
	EXPECT_EQ(Str(Leaf, TEXT("class")), "TextBlock");
	EXPECT_FALSE(Leaf->GetBoolField(TEXT("is_variable")));

	// An empty panel has no children key either, and a tree without a root is an empty skeleton.
	Button->ClearChildren();
	EXPECT_EQ(Keys(Objects(Obj(FBlueprintReadUtils::SerializeWidgetHierarchy(Menu), TEXT("root_widget")), TEXT("children"))[0]), (std::vector<std::string>{"name", "class", "is_variable"}));
	EXPECT_EQ(Keys(FBlueprintReadUtils::SerializeWidgetHierarchy(Empty)), std::vector<std::string>{});
	EXPECT_FALSE(FBlueprintReadUtils::SerializeWidgetHierarchy(nullptr).IsValid());
}

TEST_F(ReadWidgetTree, ASchemaReadCarriesTheSkeleton)
{
	ASSERT_NE(Label, nullptr);
	Calvorn::FToolResult Result;
	const FString Text = FBlueprintReadUtils::ReadBlueprint(Request(TEXT("read_blueprint_schema"), TEXT("{\"path\": \"/Game/Readers/WBP_Menu\"}")), Result);
	const TSharedPtr<FJsonObject> Document = ParseJson(Text);
	EXPECT_TRUE(Result.WasSuccessful()) << Describe(Result);
	EXPECT_EQ(Keys(Document).back(), "widget_tree");
	EXPECT_EQ(Keys(Obj(Document, TEXT("widget_tree"))), (std::vector<std::string>{"widget_hierarchy"}));
	EXPECT_EQ(Str(Obj(Obj(Obj(Document, TEXT("widget_tree")), TEXT("widget_hierarchy")), TEXT("root_widget")), TEXT("name")), "Toggle");
}

TEST_F(ReadWidgetTree, TheToolGivesDetailsOfTheWidgetsNamed)
{
	ASSERT_NE(Label, nullptr);
	const Calvorn::FToolResult Plain = Call(TEXT("{\"path\": \"/Game/Readers/WBP_Menu\"}"));
	EXPECT_EQ(U8s(Plain.GetSuccessMessages()), (std::vector<std::string>{"Successfully read widget_tree from Widget Blueprint: WBP_Menu"}));
	EXPECT_EQ(Keys(Content(Plain)), (std::vector<std::string>{"path", "widget_tree"}));
	EXPECT_EQ(Keys(Obj(Content(Plain), TEXT("widget_tree"))), (std::vector<std::string>{"widget_hierarchy"}));

	const Calvorn::FToolResult One = Call(TEXT("{\"path\": \"/Game/Readers/WBP_Menu\", \"widget_name\": \"StartLabel\"}"));
	EXPECT_TRUE(One.WasSuccessful()) << Describe(One);
	const TSharedPtr<FJsonObject> Widgets = Obj(Obj(Content(One), TEXT("widget_tree")), TEXT("widgets"));
	EXPECT_EQ(Keys(Widgets), (std::vector<std::string>{"StartLabel"}));
	const TSharedPtr<FJsonObject> Details = Obj(Widgets, TEXT("StartLabel"));
	EXPECT_EQ(Keys(Details), (std::vector<std::string>{"name", "class", "is_variable", "parent", "slot", "properties"}));
	EXPECT_EQ(Str(Details, TEXT("parent")), "StartButton");
	EXPECT_EQ(Str(Obj(Details, TEXT("properties")), TEXT("bIsEnabled")), "True");
	// The slot's own members, as text: the panel it sits in and the widget it holds.
	EXPECT_NE(Str(Obj(Details, TEXT("slot")), TEXT("Parent")).find("StartButton"), std::string::npos);
	EXPECT_NE(Str(Obj(Details, TEXT("slot")), TEXT("Content")).find("StartLabel"), std::string::npos);

	const Calvorn::FToolResult Two = Call(TEXT("{\"path\": \"/Game/Readers/WBP_Menu\", \"widget_name\": [\"Toggle\", \"Ghost\"], \"finalize_modifications\": true}"));
	const TSharedPtr<FJsonObject> Both = Obj(Obj(Content(Two), TEXT("widget_tree")), TEXT("widgets"));
	EXPECT_EQ(Keys(Both), (std::vector<std::string>{"Toggle", "Ghost"}));
	EXPECT_EQ(Str(Obj(Both, TEXT("Toggle")), TEXT("parent")), "") << "the root has no parent";
	EXPECT_EQ(Keys(Obj(Both, TEXT("Ghost"))), (std::vector<std::string>{"name", "status"}));
	// The tool passes on the path and the names only; a read-back's flag reaches the reader through its callback.
	EXPECT_EQ(Str(Obj(Both, TEXT("Ghost")), TEXT("status")), "not_found");

	Calvorn::FToolResult ReadBack;
	const FString Text = FBlueprintReadUtils::ReadBlueprint(Request(TEXT("read_blueprint_widget_tree"), TEXT("{\"path\": \"/Game/Readers/WBP_Menu\", \"widget_name\": [\"Ghost\"], \"finalize_modifications\": true}")), ReadBack);
	EXPECT_EQ(Str(Obj(Obj(Obj(ParseJson(Text), TEXT("widget_tree")), TEXT("widgets")), TEXT("Ghost")), TEXT("status")), "deleted");
}
