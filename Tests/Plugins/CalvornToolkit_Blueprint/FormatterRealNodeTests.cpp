// The formatter over the editor's own nodes: widths come from the pins a call node really allocates, purity from
// whether it has exec pins, and heights from the K2 estimate. The positions checked here do not depend on heights.

#include "FormatterTestScene.h"
#include "K2Node_CallFunction.h"
#include "Modules/ModuleManager.h"

namespace
{
	UK2Node_CallFunction* AddCall(UEdGraph* Graph, const TCHAR* ClassPath, const TCHAR* FunctionName, int32 X, int32 Y)
	{
		FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
		UClass* Class = FindObject<UClass>(nullptr, ClassPath);
		const UFunction* Function = Class ? Class->FindFunctionByName(FName(FunctionName)) : nullptr;
		EXPECT_NE(Function, nullptr) << FStringToUTF8(FunctionName);
		UK2Node_CallFunction* Node = static_cast<UK2Node_CallFunction*>(Graph->CreateNode(UK2Node_CallFunction::StaticClass(), false));
		Node->NodePosX = X;
		Node->NodePosY = Y;
		if (Function)
		{
			Node->SetFromFunction(Function);
		}
		Node->AllocateDefaultPins();
		return Node;
	}
}

TEST(FormatterRealNodes, CallNodesLayOutByTheirPinsAndPurity)
{
	UEdGraph* Graph = NewObject<UEdGraph>(GetTransientPackage(), NAME_None);
	Graph->Schema = UEdGraphSchema_K2::StaticClass();
	UK2Node_CallFunction* First = AddCall(Graph, TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"), 333, 333);
	UK2Node_CallFunction* Second = AddCall(Graph, TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"), 333, 333);
	UK2Node_CallFunction* Convert = AddCall(Graph, TEXT("/Script/Engine.KismetStringLibrary"), TEXT("Conv_IntToString"), 333, 333);
	ASSERT_GT(First->Pins.Num(), 6) << "Print String is a wide node";
	ASSERT_TRUE(Convert->IsNodePure());

	First->FindPinChecked(UEdGraphSchema_K2::PN_Then)->MakeLinkTo(Second->FindPinChecked(UEdGraphSchema_K2::PN_Execute));
	Convert->GetReturnValuePin()->MakeLinkTo(First->FindPinChecked(TEXT("InString")));

	FBlueprintNodeFormatter::FormatNodes(Graph, {First, Second, Convert});

	// First is the root at the origin; Second follows a 450-wide node: 650, snapped to 660. The pure conversion
	// hangs at (0 - 250, 0 - 200); -250 is halfway between -260 and -240 and halves go up.
	EXPECT_NODE_AT(First, 0, 0);
	EXPECT_NODE_AT(Second, 660, 0);
	EXPECT_NODE_AT(Convert, -240, -200);
}
