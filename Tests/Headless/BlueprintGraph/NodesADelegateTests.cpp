#include "NodesATestUtils.h"

#include "Engine/BlueprintGeneratedClass.h"
#include "K2Node_AddDelegate.h"
#include "K2Node_AssignDelegate.h"
#include "K2Node_CallDelegate.h"
#include "K2Node_ClearDelegate.h"
#include "K2Node_CreateDelegate.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_Literal.h"
#include "K2Node_RemoveDelegate.h"
#include "K2Node_Self.h"
#include "UObject/UnrealType.h"

using namespace NodesATest;

namespace
{
	const TCHAR* const ActorPath = TEXT("/Script/Engine.Actor");
	constexpr EObjectFlags FieldFlags = RF_Public | RF_MarkAsNative | RF_Transient;

	class NodesADelegates : public FBlueprintFixture
	{
	protected:
		/**
		 * Stands in for the compiler: a skeleton class with a dispatcher OnDoorOpened(Amount) the Blueprint declares,
		 * and HandleOverlap(OverlappedActor, OtherActor), an event fit for the actor's OnActorBeginOverlap.
		 */
		void MakeSkeleton()
		{
			UBlueprintGeneratedClass* Skeleton = NewObject<UBlueprintGeneratedClass>(Blueprint->GetPackage(),
				*FString::Printf(TEXT("SKEL_%s_C"), *Blueprint->GetName()), RF_Public | RF_Transient);
			Skeleton->SetSuperStruct(Blueprint->ParentClass);
			Skeleton->ClassGeneratedBy = Blueprint;
			static_cast<UClass*>(Skeleton)->ClassGeneratedBy = Blueprint;
			UClass* Actor = FindClass(ActorPath);

			UFunction* Handler = NewObject<UFunction>(Skeleton, TEXT("HandleOverlap"), RF_Public | RF_Transient);
			Handler->FunctionFlags = FUNC_BlueprintCallable | FUNC_BlueprintEvent | FUNC_Public;
			for (const TCHAR* Param : {TEXT("OtherActor"), TEXT("OverlappedActor")})
			{
				FObjectProperty* Property = new FObjectProperty(Handler, Param, FieldFlags);
				Property->SetPropertyClass(Actor);
				Property->SetPropertyFlags(CPF_Parm);
				Handler->AddCppProperty(Property);
			}
			Handler->Bind();
			Handler->StaticLink(true);
			Skeleton->AddFunctionToFunctionMap(Handler, Handler->GetFName());

			UDelegateFunction* Signature = NewObject<UDelegateFunction>(Skeleton, TEXT("OnDoorOpened__DelegateSignature"), RF_Public | RF_Transient);
			Signature->FunctionFlags = FUNC_Public | FUNC_Delegate | FUNC_MulticastDelegate;
			FDoubleProperty* Amount = new FDoubleProperty(Signature, TEXT("Amount"), FieldFlags);
			Amount->SetPropertyFlags(CPF_Parm);
			Signature->AddCppProperty(Amount);
			Signature->Bind();
			Signature->StaticLink(true);
			Skeleton->AddFunctionToFunctionMap(Signature, Signature->GetFName());

			FMulticastInlineDelegateProperty* Dispatcher = new FMulticastInlineDelegateProperty(Skeleton, TEXT("OnDoorOpened"), FieldFlags);
			Dispatcher->SignatureFunction = Signature;
			Dispatcher->SetPropertyFlags(CPF_Edit | CPF_BlueprintVisible | CPF_BlueprintAssignable | CPF_BlueprintCallable);
			Skeleton->AddCppProperty(Dispatcher);
			Skeleton->Bind();
			Skeleton->StaticLink(true);
			Blueprint->SkeletonGeneratedClass = Skeleton;
		}

		template <typename T>
		T* PlaceDispatcherNode(bool bSelf)
		{
			UClass* Owner = bSelf ? Blueprint->SkeletonGeneratedClass.Get() : FindClass(ActorPath);
			FProperty* Property = Owner->FindPropertyByName(bSelf ? TEXT("OnDoorOpened") : TEXT("OnActorBeginOverlap"));
			EXPECT_NE(Property, nullptr);
			return Place<T>(EventGraph, [Property, bSelf, Owner](T& Node) { Node.SetFromProperty(Property, bSelf, bSelf ? nullptr : Owner); });
		}
	};
}

TEST_F(NodesADelegates, DispatcherNodesShowTheirPinsAndTitles)
{
	MakeBlueprint(FindClass(ActorPath));
	MakeSkeleton();
	const std::string Bind = "execute:in:exec, then:out:exec, self:in:object, Delegate:in:delegate";
	struct FCase
	{
		UK2Node_BaseMCDelegate* Node;
		std::string Pins;
		std::string Title;
	};
	const FCase Cases[] = {
		{PlaceDispatcherNode<UK2Node_AddDelegate>(true), Bind, "Bind Event to On Door Opened"},
		{PlaceDispatcherNode<UK2Node_RemoveDelegate>(true), Bind, "Unbind Event from On Door Opened"},
		{PlaceDispatcherNode<UK2Node_ClearDelegate>(true), "execute:in:exec, then:out:exec, self:in:object", "Unbind all Events from On Door Opened"},
		{PlaceDispatcherNode<UK2Node_CallDelegate>(true), "execute:in:exec, then:out:exec, self:in:object, Amount:in:real/double", "Call On Door Opened"},
		{PlaceDispatcherNode<UK2Node_AssignDelegate>(true), Bind, "Bind Event to On Door Opened"},
		{PlaceDispatcherNode<UK2Node_AddDelegate>(false), Bind, "Bind Event to On Actor Begin Overlap"},
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Title);
		EXPECT_EQ(DescribePins(Case.Node), Case.Pins);
		EXPECT_EQ(U8(Case.Node->GetNodeTitle(ENodeTitleType::FullTitle)), Case.Title);
		EXPECT_FALSE(Case.Node->IsNodePure());
		EXPECT_EQ(U8(Case.Node->FindPinChecked(TEXT("self"))->PinFriendlyName), "Target");
		FCompilerResultsLog Log;
		Case.Node->ValidateNodeDuringCompilation(Log);
		EXPECT_EQ(Log.NumErrors, 0) << Messages(Log);
	}
	EXPECT_EQ(U8(Cases[4].Node->GetNodeTitle(ENodeTitleType::MenuTitle)), "Assign On Door Opened");

	// The bind input carries the dispatcher's signature; the target is the declaring class.
	const UEdGraphPin* Delegate = Cases[5].Node->GetDelegatePin();
	ASSERT_NE(Delegate, nullptr);
	EXPECT_TRUE(Delegate->PinType.bIsReference);
	EXPECT_TRUE(Delegate->PinType.bIsConst);
	EXPECT_EQ(U8(Delegate->PinType.PinSubCategoryMemberReference.MemberName), "ActorBeginOverlapSignature__DelegateSignature");
	EXPECT_EQ(U8(Delegate->PinFriendlyName), "Event");
	EXPECT_EQ(Cases[5].Node->FindPinChecked(TEXT("self"))->PinType.PinSubCategoryObject.Get(), FindClass(ActorPath));

	// The actor's dispatchers may be bound from Blueprints, not called.
	UK2Node_CallDelegate* CallOverlap = PlaceDispatcherNode<UK2Node_CallDelegate>(false);
	EXPECT_EQ(DescribePins(CallOverlap), "execute:in:exec, then:out:exec, self:in:object, OverlappedActor:in:object, OtherActor:in:object");
	FCompilerResultsLog Log;
	CallOverlap->ValidateNodeDuringCompilation(Log);
	EXPECT_EQ(Log.NumErrors, 1);
	EXPECT_EQ(Messages(Log).rfind("Event Dispatcher is not 'BlueprintCallable' ", 0), 0u) << Messages(Log);
}

TEST_F(NodesADelegates, CreateEventChecksTheSelectedFunctionAgainstTheDispatcher)
{
	MakeBlueprint(FindClass(ActorPath));
	MakeSkeleton();
	UK2Node_CreateDelegate* Create = Place<UK2Node_CreateDelegate>(EventGraph, [](UK2Node_CreateDelegate&) {});
	EXPECT_EQ(DescribePins(Create), "self:in:object, OutputDelegate:out:delegate");
	EXPECT_EQ(U8(Create->GetNodeTitle(ENodeTitleType::FullTitle)), "Create Event");
	EXPECT_EQ(U8(Create->GetObjectInPin()->PinFriendlyName), "Object");
	EXPECT_EQ(U8(Create->GetDelegateOutPin()->PinFriendlyName), "Event");
	EXPECT_TRUE(Create->IsNodePure());

	FString Why;
	Create->SetFunction(TEXT("HandleOverlap"));
	EXPECT_FALSE(Create->IsValid(&Why));
	EXPECT_EQ(U8(Why), "Unable to determine expected signature - is the delegate pin connected?");

	UK2Node_AddDelegate* Bind = PlaceDispatcherNode<UK2Node_AddDelegate>(false);
	Create->GetDelegateOutPin()->MakeLinkTo(Bind->GetDelegatePin());
	EXPECT_EQ(Create->GetDelegateSignature(), FindClass(ActorPath)->FindPropertyByName(TEXT("OnActorBeginOverlap")) ? CastField<FMulticastDelegateProperty>(FindClass(ActorPath)->FindPropertyByName(TEXT("OnActorBeginOverlap")))->SignatureFunction : nullptr);
	EXPECT_EQ(Create->GetScopeClass(), Blueprint->SkeletonGeneratedClass.Get());
	EXPECT_TRUE(Create->IsValid(&Why)) << U8(Why);
	FCompilerResultsLog CleanLog;
	Create->ValidateNodeDuringCompilation(CleanLog);
	EXPECT_EQ(CleanLog.NumErrors, 0) << Messages(CleanLog);

	const struct
	{
		const TCHAR* Function;
		const char* Message;
	} Failures[] = {
		{TEXT("Nope"), "Unable to find the selected function/event: 'Nope' - has it been deleted?"},
		// ReceiveTick takes a float, not two actors.
		{TEXT("ReceiveTick"), "The function/event 'ReceiveTick' does not match the necessary signature - has the delegate or function/event changed?"},
	};
	for (const auto& Failure : Failures)
	{
		SCOPED_TRACE(Failure.Message);
		Create->SetFunction(Failure.Function);
		EXPECT_FALSE(Create->IsValid(&Why));
		EXPECT_EQ(U8(Why), Failure.Message);
		FCompilerResultsLog Log;
		Create->ValidateNodeDuringCompilation(Log);
		EXPECT_EQ(Log.NumErrors, 1);
		EXPECT_NE(Messages(Log).find(std::string("Signature Error: ") + Failure.Message), std::string::npos) << Messages(Log);
	}

	// Unplugged from the dispatcher, a function that no longer fits is forgotten.
	Create->GetDelegateOutPin()->BreakAllPinLinks();
	Create->HandleAnyChange();
	EXPECT_TRUE(Create->GetFunctionName().IsNone());
}

TEST_F(NodesADelegates, SelfAndLiteralNodes)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_Self* Self = Place<UK2Node_Self>(EventGraph, [](UK2Node_Self&) {});
	EXPECT_EQ(DescribePins(Self), "self:out:object/self");
	EXPECT_EQ(U8(Self->GetNodeTitle(ENodeTitleType::FullTitle)), "Self-Reference");
	EXPECT_EQ(U8(Self->GetNodeTitle(ENodeTitleType::MenuTitle)), "Get a reference to self");
	EXPECT_EQ(U8(Self->GetMenuCategory()), "Variables");
	EXPECT_TRUE(Self->IsNodePure());

	UK2Node_Literal* Empty = Place<UK2Node_Literal>(EventGraph, [](UK2Node_Literal&) {});
	EXPECT_EQ(DescribePins(Empty), "Unknown:out:object");
	UBlueprint* Referenced = Blueprint;
	UK2Node_Literal* Literal = Place<UK2Node_Literal>(EventGraph, [Referenced](UK2Node_Literal& Node) { Node.SetObjectRef(Referenced); });
	EXPECT_EQ(DescribePins(Literal), "BP_Test:out:object");
	EXPECT_EQ(Literal->GetValuePin()->PinType.PinSubCategoryObject.Get(), UBlueprint::StaticClass());
	EXPECT_EQ(U8(Literal->GetNodeTitle(ENodeTitleType::FullTitle)), "BP_Test");

	// Both come back from the package with their pins and the literal's object.
	FString FirstBytes;
	ASSERT_NE(SaveAndReload(&FirstBytes), nullptr);
	ASSERT_EQ(EventGraph->Nodes.Num(), 3);
	UK2Node_Literal* LoadedLiteral = Cast<UK2Node_Literal>(EventGraph->Nodes[2]);
	ASSERT_NE(LoadedLiteral, nullptr);
	EXPECT_EQ(LoadedLiteral->GetObjectRef(), Blueprint);
	EXPECT_EQ(DescribePins(EventGraph->Nodes[0]), "self:out:object/self");
	LoadedLiteral->ReconstructNode();
	EXPECT_EQ(DescribePins(LoadedLiteral), "BP_Test:out:object");
	EXPECT_EQ(SaveAgainBytes(), FirstBytes);
}

TEST_F(NodesADelegates, DispatcherNodesSurviveSaving)
{
	MakeBlueprint(FindClass(ActorPath));
	MakeSkeleton();
	UK2Node_AddDelegate* Bind = PlaceDispatcherNode<UK2Node_AddDelegate>(false);
	UK2Node_CreateDelegate* Create = Place<UK2Node_CreateDelegate>(EventGraph, [](UK2Node_CreateDelegate& Node) { Node.SetFunction(TEXT("HandleOverlap")); });
	Create->GetDelegateOutPin()->MakeLinkTo(Bind->GetDelegatePin());
	UK2Node_ClearDelegate* Clear = PlaceDispatcherNode<UK2Node_ClearDelegate>(false);
	const std::string BindPins = DescribePins(Bind);

	Blueprint->SkeletonGeneratedClass = nullptr;
	FString FirstBytes;
	ASSERT_NE(SaveAndReload(&FirstBytes), nullptr);
	ASSERT_EQ(EventGraph->Nodes.Num(), 3);
	UK2Node_AddDelegate* LoadedBind = Cast<UK2Node_AddDelegate>(EventGraph->Nodes[0]);
	UK2Node_CreateDelegate* LoadedCreate = Cast<UK2Node_CreateDelegate>(EventGraph->Nodes[1]);
	ASSERT_TRUE(LoadedBind && LoadedCreate && Cast<UK2Node_ClearDelegate>(EventGraph->Nodes[2]));
	(void)Clear;
	EXPECT_EQ(U8(LoadedCreate->GetFunctionName()), "HandleOverlap");
	EXPECT_EQ(DescribePins(LoadedBind), BindPins);
	EXPECT_EQ(U8(LoadedBind->GetNodeTitle(ENodeTitleType::FullTitle)), "Bind Event to On Actor Begin Overlap");
	ASSERT_EQ(LoadedBind->GetDelegatePin()->LinkedTo.Num(), 1);
	EXPECT_EQ(LoadedBind->GetDelegatePin()->LinkedTo[0], LoadedCreate->GetDelegateOutPin());
	EXPECT_EQ(SaveAgainBytes(), FirstBytes);
}

TEST_F(NodesADelegates, AssignPlacesAndBindsACustomEvent)
{
	MakeBlueprint(FindClass(ActorPath));
	MakeSkeleton();
	UK2Node_AssignDelegate* Assign = PlaceDispatcherNode<UK2Node_AssignDelegate>(false);
	Assign->NodePosX = 400;
	Assign->NodePosY = 96;
	EXPECT_EQ(U8(Assign->GetNodeTitle(ENodeTitleType::ListView)), "Assign On Actor Begin Overlap");
	EXPECT_EQ(U8(Assign->GetMenuCategory()), "Collision");
	// Placed with its pins, the node brings its event along.
	Assign->PostPlacedNewNode();
	ASSERT_EQ(Assign->GetDelegatePin()->LinkedTo.Num(), 1);
	UK2Node_CustomEvent* Event = Cast<UK2Node_CustomEvent>(Assign->GetDelegatePin()->LinkedTo[0]->GetOwningNode());
	ASSERT_NE(Event, nullptr);
	EXPECT_EQ(U8(Event->CustomFunctionName), "OnActorBeginOverlap_Event");
	EXPECT_EQ(DescribePins(Event), "OutputDelegate:out:delegate, then:out:exec, OverlappedActor:out:object, OtherActor:out:object");
	EXPECT_EQ(Event->NodePosX, 256);
	EXPECT_EQ(Event->NodePosY, 240);
	EXPECT_TRUE(EventGraph->Nodes.Contains(Event));

	// A second one finds the name taken and numbers its event.
	UK2Node_AssignDelegate* Again = PlaceDispatcherNode<UK2Node_AssignDelegate>(false);
	Again->PostPlacedNewNode();
	ASSERT_EQ(Again->GetDelegatePin()->LinkedTo.Num(), 1);
	EXPECT_EQ(U8(CastChecked<UK2Node_CustomEvent>(Again->GetDelegatePin()->LinkedTo[0]->GetOwningNode())->CustomFunctionName), "OnActorBeginOverlap_Event_0");
}
