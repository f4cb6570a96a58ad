#include "Headless/UnrealEd/EditorTestUtils.h"

#include "GameFramework/Actor.h"
#include "K2Node_CallFunction.h"
#include "K2Node_VariableGet.h"

using namespace EditorTest;

namespace
{
	const char* const InvalidTarget = "uses an invalid target.  It may depend on a node that is not connected to the execution chain, and got purged.";

	class NodesCVariableTarget : public FEditorFixture
	{
	protected:
		NodesCVariableTarget() : FEditorFixture(TEXT("NodesCVariableTarget")) {}

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

		static UK2Node_CallFunction* CallLibrary(UEdGraph* Graph, const TCHAR* Library, const TCHAR* Function)
		{
			UFunction* Found = FindClass(Library)->FindFunctionByName(Function);
			return Place<UK2Node_CallFunction>(Graph, [Found](UK2Node_CallFunction& Node) { Node.SetFromFunction(Found); });
		}

		/** A read of a character's mesh, from a Blueprint that is no character. */
		static UK2Node_VariableGet* GetMesh(UEdGraph* Graph)
		{
			UClass* Character = FindClass(TEXT("/Script/Engine.Character"));
			return Place<UK2Node_VariableGet>(Graph, [Character](UK2Node_VariableGet& Node) { Node.VariableReference.SetExternalMember(TEXT("Mesh"), Character); });
		}

		static FCompilerResultsLog Compile(UBlueprint* Blueprint)
		{
			FCompilerResultsLog Log;
			FKismetEditorUtilities::CompileBlueprint(Blueprint, EBlueprintCompileOptions::None, &Log);
			return Log;
		}
	};
}

TEST_F(NodesCVariableTarget, AnotherObjectsMemberNeedsItsObjectOnlyWhenUsed)
{
	UBlueprint* Blueprint = Create(AActor::StaticClass(), TEXT("BP_Target"));
	ASSERT_NE(Blueprint, nullptr);
	UEdGraph* Graph = Blueprint->UbergraphPages[0];

	// Nothing reads it: it is left out, as the editor's compiler leaves unused nodes out.
	UK2Node_VariableGet* Unused = GetMesh(Graph);
	ASSERT_NE(Unused->FindPin(TEXT("Mesh")), nullptr);
	FCompilerResultsLog First = Compile(Blueprint);
	EXPECT_EQ(Messages(First).find(InvalidTarget), std::string::npos) << Messages(First);

	// Read by a call, with no character to read it from.
	UK2Node_VariableGet* Used = GetMesh(Graph);
	UK2Node_CallFunction* IsValid = CallLibrary(Graph, TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("IsValid"));
	Used->FindPin(TEXT("Mesh"))->MakeLinkTo(IsValid->FindPin(TEXT("Object")));
	FCompilerResultsLog Second = Compile(Blueprint);
	EXPECT_EQ(Second.NumErrors, 1) << Messages(Second);
	EXPECT_NE(Messages(Second).find(InvalidTarget), std::string::npos) << Messages(Second);
	EXPECT_TRUE(Used->bHasCompilerMessage);
	EXPECT_FALSE(Unused->bHasCompilerMessage);

	// Given its character, the read is sound.
	UK2Node_CallFunction* Player = CallLibrary(Graph, TEXT("/Script/Engine.GameplayStatics"), TEXT("GetPlayerCharacter"));
	Player->GetReturnValuePin()->MakeLinkTo(GetDefault<UEdGraphSchema_K2>()->FindSelfPin(*Used, EGPD_Input));
	FCompilerResultsLog Third = Compile(Blueprint);
	EXPECT_EQ(Third.NumErrors, 0) << Messages(Third);
	EXPECT_EQ(Blueprint->Status, BS_UpToDate);
}
