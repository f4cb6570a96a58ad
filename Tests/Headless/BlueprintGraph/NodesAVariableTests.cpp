#include "NodesATestUtils.h"

#include "Engine/BlueprintGeneratedClass.h"
#include "K2Node_VariableGet.h"
#include "K2Node_VariableSet.h"
#include "UObject/UnrealType.h"

using namespace NodesATest;

namespace
{
	const TCHAR* const ActorPath = TEXT("/Script/Engine.Actor");
	constexpr EObjectFlags FieldFlags = RF_Public | RF_MarkAsNative | RF_Transient;

	class NodesAVariables : public FBlueprintFixture
	{
	protected:
		/**
		 * Stands in for the compiler: a skeleton class of the Blueprint with its variables (Health, bIsOpen with a
		 * RepNotify, Door, a read-only Secret) and a function OpenDoor with a local variable Steps.
		 */
		UClass* MakeSkeleton(const TCHAR* HealthName = TEXT("Health"))
		{
			const FString Name = FString::Printf(TEXT("SKEL_%s_C"), *Blueprint->GetName());
			// A recompile replaces the skeleton: the old one steps aside, as the compiler's does.
			if (UObject* Old = StaticFindObject(UObject::StaticClass(), Blueprint->GetPackage(), *Name))
			{
				Old->Rename(*MakeUniqueObjectName(Blueprint->GetPackage(), Old->GetClass(), TEXT("REINST_SKEL")).ToString(), nullptr, REN_DontCreateRedirectors);
			}
			UBlueprintGeneratedClass* Skeleton = NewObject<UBlueprintGeneratedClass>(Blueprint->GetPackage(), *Name, RF_Public | RF_Transient);
			Skeleton->SetSuperStruct(Blueprint->ParentClass);
			Skeleton->ClassGeneratedBy = Blueprint;
			static_cast<UClass*>(Skeleton)->ClassGeneratedBy = Blueprint;

			UFunction* OnRep = NewObject<UFunction>(Skeleton, TEXT("OnRep_IsOpen"), RF_Public | RF_Transient);
			OnRep->Bind();
			OnRep->StaticLink(true);
			Skeleton->AddFunctionToFunctionMap(OnRep, OnRep->GetFName());
			UFunction* OpenDoor = NewObject<UFunction>(Skeleton, TEXT("OpenDoor"), RF_Public | RF_Transient);
			OpenDoor->AddCppProperty(new FIntProperty(OpenDoor, TEXT("Steps"), FieldFlags));
			OpenDoor->Bind();
			OpenDoor->StaticLink(true);
			Skeleton->AddFunctionToFunctionMap(OpenDoor, OpenDoor->GetFName());

			// Added last first: AddCppProperty puts each property in front.
			FIntProperty* Secret = new FIntProperty(Skeleton, TEXT("Secret"), FieldFlags);
			Secret->SetPropertyFlags(CPF_Edit | CPF_BlueprintVisible | CPF_BlueprintReadOnly);
			Skeleton->AddCppProperty(Secret);
			FObjectProperty* Door = new FObjectProperty(Skeleton, TEXT("Door"), FieldFlags);
			Door->SetPropertyClass(FindClass(ActorPath));
			Door->SetPropertyFlags(CPF_Edit | CPF_BlueprintVisible);
			Skeleton->AddCppProperty(Door);
			FBoolProperty* IsOpen = new FBoolProperty(Skeleton, TEXT("bIsOpen"), FieldFlags);
			IsOpen->SetPropertyFlags(CPF_Edit | CPF_BlueprintVisible | CPF_Net | CPF_RepNotify);
			IsOpen->RepNotifyFunc = TEXT("OnRep_IsOpen");
			Skeleton->AddCppProperty(IsOpen);
			FDoubleProperty* Health = new FDoubleProperty(Skeleton, HealthName, FieldFlags);
			Health->SetPropertyFlags(CPF_Edit | CPF_BlueprintVisible);
			Skeleton->AddCppProperty(Health);
			Skeleton->Bind();
			Skeleton->StaticLink(true);
			Blueprint->SkeletonGeneratedClass = Skeleton;
			return Skeleton;
		}

		void DeclareHealth(const TCHAR* Name)
		{
			FBPVariableDescription Variable;
			Variable.VarName = Name;
			Variable.VarGuid = FGuid(11, 22, 33, 44);
			Variable.VarType.PinCategory = UEdGraphSchema_K2::PC_Real;
			Variable.VarType.PinSubCategory = UEdGraphSchema_K2::PC_Double;
			Variable.SetMetaData(FBlueprintMetadata::MD_Tooltip, TEXT("How much damage the door takes"));
			Blueprint->NewVariables.Add(Variable);
		}

		template <typename T>
		T* PlaceSelf(const TCHAR* VarName, UEdGraph* Graph = nullptr)
		{
			FProperty* Property = Blueprint->SkeletonGeneratedClass->FindPropertyByName(VarName);
			EXPECT_NE(Property, nullptr) << U8(FString(VarName));
			return Place<T>(Graph ? Graph : EventGraph, [Property](T& Node) { Node.SetFromProperty(Property, true, nullptr); });
		}

		template <typename T>
		T* PlaceExternal(const TCHAR* ClassPath, const TCHAR* VarName)
		{
			UClass* Class = FindClass(ClassPath);
			FProperty* Property = Class ? Class->FindPropertyByName(VarName) : nullptr;
			EXPECT_NE(Property, nullptr) << U8(FString(VarName));
			return Place<T>(EventGraph, [Property, Class](T& Node) { Node.SetFromProperty(Property, false, Class); });
		}
	};
}

TEST_F(NodesAVariables, GettersAndSettersOfSelfVariables)
{
	MakeBlueprint(FindClass(ActorPath));
	DeclareHealth(TEXT("Health"));
	MakeSkeleton();
	const struct
	{
		const TCHAR* Variable;
		bool bSetter;
		bool bImpure;
		std::string Pins;
		std::string Title;
		bool bPure;
	} Cases[] = {
		{TEXT("Health"), false, false, "Health:out:real/double, self:in:object (hidden)", "Get Health", true},
		{TEXT("bIsOpen"), false, true, "execute:in:exec, then:out:exec, else:out:exec, bIsOpen:out:bool, self:in:object (hidden)", "Get", false},
		{TEXT("Door"), false, true, "execute:in:exec, then:out:exec, else:out:exec, Door:out:object, self:in:object (hidden)", "Get", false},
		// Numbers have no impure form; asking for one changes nothing.
		{TEXT("Health"), false, true, "Health:out:real/double, self:in:object (hidden)", "Get Health", true},
		{TEXT("Health"), true, false, "execute:in:exec, then:out:exec, Health:in:real/double, self:in:object (hidden), Output_Get:out:real/double", "Set Health", false},
		{TEXT("bIsOpen"), true, false, "execute:in:exec, then:out:exec, bIsOpen:in:bool, self:in:object (hidden), Output_Get:out:bool", "Set with Notify bIsOpen", false},
	};
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(FString(Case.Variable)) + (Case.bSetter ? " set" : " get") + (Case.bImpure ? " impure" : ""));
		UK2Node_Variable* Node = nullptr;
		if (Case.bSetter)
		{
			Node = PlaceSelf<UK2Node_VariableSet>(Case.Variable);
		}
		else
		{
			UK2Node_VariableGet* Get = PlaceSelf<UK2Node_VariableGet>(Case.Variable);
			if (Case.bImpure)
			{
				Get->SetPurity(false);
			}
			Node = Get;
		}
		EXPECT_TRUE(Node->VariableReference.IsSelfContext());
		EXPECT_EQ(DescribePins(Node), Case.Pins);
		EXPECT_EQ(U8(Node->GetNodeTitle(ENodeTitleType::FullTitle)), Case.Title);
		EXPECT_EQ(Node->IsNodePure(), Case.bPure);
		FCompilerResultsLog Log;
		Node->ValidateNodeDuringCompilation(Log);
		EXPECT_EQ(Log.NumErrors + Log.NumWarnings, 0) << Messages(Log);
	}

	UK2Node_VariableGet* IsOpen = PlaceSelf<UK2Node_VariableGet>(TEXT("bIsOpen"));
	IsOpen->SetPurity(false);
	EXPECT_EQ(U8(IsOpen->FindPinChecked(TEXT("then"))->PinFriendlyName), "True");
	EXPECT_EQ(U8(IsOpen->FindPinChecked(TEXT("else"))->PinFriendlyName), "False");
	IsOpen->SetPurity(true);
	EXPECT_EQ(DescribePins(IsOpen), "bIsOpen:out:bool, self:in:object (hidden)");
	UK2Node_VariableGet* Door = PlaceSelf<UK2Node_VariableGet>(TEXT("Door"));
	Door->SetPurity(false);
	EXPECT_EQ(U8(Door->FindPinChecked(TEXT("then"))->PinFriendlyName), "Is Valid");
	EXPECT_EQ(U8(Door->FindPinChecked(TEXT("else"))->PinFriendlyName), "Is Not Valid");

	UK2Node_VariableGet* Health = PlaceSelf<UK2Node_VariableGet>(TEXT("Health"));
	EXPECT_EQ(U8(Health->GetTooltipText()), "Read the value of variable Health\nHow much damage the door takes");
	EXPECT_EQ(Health->GetValuePin(), Health->FindPin(TEXT("Health")));
	EXPECT_EQ(Health->VariableReference.GetMemberGuid(), FGuid(11, 22, 33, 44));
	EXPECT_EQ(Health->GetBlueprintVarDescription(), &Blueprint->NewVariables[0]);
	UK2Node_VariableSet* SetHealth = PlaceSelf<UK2Node_VariableSet>(TEXT("Health"));
	EXPECT_TRUE(SetHealth->GetPinNameOverride(*SetHealth->FindPinChecked(TEXT("Output_Get"))).IsEmpty());
	EXPECT_EQ(U8(SetHealth->GetTooltipText()), "Set the value of variable Health");

	// A read-only variable cannot be written.
	UK2Node_VariableSet* SetSecret = PlaceSelf<UK2Node_VariableSet>(TEXT("Secret"));
	FCompilerResultsLog Log;
	SetSecret->ValidateNodeDuringCompilation(Log);
	EXPECT_EQ(Log.NumErrors, 1);
	EXPECT_EQ(Messages(Log).rfind("SKEL_BP_Test_C.Secret is not blueprint writable. ", 0), 0u) << Messages(Log);
}

TEST_F(NodesAVariables, VariablesOfOtherObjectsNeedATarget)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_VariableGet* Hidden = PlaceExternal<UK2Node_VariableGet>(ActorPath, TEXT("bHidden"));
	EXPECT_FALSE(Hidden->VariableReference.IsSelfContext());
	EXPECT_EQ(Hidden->VariableReference.GetMemberParentClass(), FindClass(ActorPath));
	EXPECT_EQ(DescribePins(Hidden), "bHidden:out:bool, self:in:object");
	EXPECT_EQ(U8(Hidden->FindPinChecked(TEXT("bHidden"))->PinFriendlyName), "Actor Hidden In Game");
	EXPECT_EQ(U8(Hidden->FindPinChecked(TEXT("self"))->PinFriendlyName), "Target");
	EXPECT_EQ(Hidden->FindPinChecked(TEXT("self"))->PinType.PinSubCategoryObject.Get(), FindClass(ActorPath));
	EXPECT_EQ(U8(Hidden->GetNodeTitle(ENodeTitleType::FullTitle)), "Get bHidden");

	// Nothing wired into the target: the compiler has no object to read from.
	FCompilerResultsLog Log;
	Hidden->CheckForErrors(GetDefault<UEdGraphSchema_K2>(), Log);
	EXPECT_EQ(Log.NumErrors, 1);
	EXPECT_NE(Messages(Log).find("uses an invalid target."), std::string::npos) << Messages(Log);

	UK2Node_VariableSet* SetDamage = PlaceExternal<UK2Node_VariableSet>(ActorPath, TEXT("bCanBeDamaged"));
	EXPECT_EQ(DescribePins(SetDamage), "execute:in:exec, then:out:exec, bCanBeDamaged:in:bool, self:in:object, Output_Get:out:bool");
	FCompilerResultsLog SetLog;
	SetDamage->ValidateNodeDuringCompilation(SetLog);
	EXPECT_EQ(SetLog.NumErrors, 0) << Messages(SetLog);
	UK2Node_VariableSet* SetHidden = PlaceExternal<UK2Node_VariableSet>(ActorPath, TEXT("bHidden"));
	FCompilerResultsLog HiddenLog;
	SetHidden->ValidateNodeDuringCompilation(HiddenLog);
	EXPECT_EQ(Messages(HiddenLog).rfind("Actor.bHidden is not blueprint writable. ", 0), 0u) << Messages(HiddenLog);
}

TEST_F(NodesAVariables, MissingAndLocalVariables)
{
	MakeBlueprint(FindClass(ActorPath));
	MakeSkeleton();
	UK2Node_VariableGet* Missing = Place<UK2Node_VariableGet>(EventGraph, [](UK2Node_VariableGet& Node) { Node.VariableReference.SetSelfMember(TEXT("Nope")); });
	EXPECT_EQ(Missing->Pins.Num(), 0);
	EXPECT_EQ(U8(Missing->GetNodeTitle(ENodeTitleType::FullTitle)), "Get");
	FCompilerResultsLog Log;
	Missing->ValidateNodeDuringCompilation(Log);
	EXPECT_EQ(Log.NumWarnings, 1);
	EXPECT_EQ(Messages(Log).rfind("Could not find a variable named \"Nope\" in '/Game/NodesA/BP_Test.BP_Test'.\nMake sure '/Game/NodesA/BP_Test.BP_Test' has been compiled for ", 0), 0u) << Messages(Log);

	// A local variable lives in its function: no target pin.
	UEdGraph* Function = AddFunctionGraph(TEXT("OpenDoor"));
	UK2Node_VariableGet* Steps = Place<UK2Node_VariableGet>(Function, [](UK2Node_VariableGet& Node) { Node.VariableReference.SetLocalMember(TEXT("Steps"), TEXT("OpenDoor"), FGuid()); });
	EXPECT_TRUE(Steps->VariableReference.IsLocalScope());
	EXPECT_EQ(DescribePins(Steps), "Steps:out:int");
	EXPECT_EQ(U8(Steps->GetNodeTitle(ENodeTitleType::FullTitle)), "Get Steps");
	UK2Node_VariableSet* SetSteps = Place<UK2Node_VariableSet>(Function, [](UK2Node_VariableSet& Node) { Node.VariableReference.SetLocalMember(TEXT("Steps"), TEXT("OpenDoor"), FGuid()); });
	EXPECT_EQ(DescribePins(SetSteps), "execute:in:exec, then:out:exec, Steps:in:int, Output_Get:out:int");
}

TEST_F(NodesAVariables, SurviveSaving)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_VariableGet* Hidden = PlaceExternal<UK2Node_VariableGet>(ActorPath, TEXT("bHidden"));
	UK2Node_VariableSet* Damage = PlaceExternal<UK2Node_VariableSet>(ActorPath, TEXT("bCanBeDamaged"));
	Damage->FindPinChecked(TEXT("bCanBeDamaged"))->DefaultValue = TEXT("true");
	UK2Node_VariableGet* Instigator = PlaceExternal<UK2Node_VariableGet>(ActorPath, TEXT("Instigator"));
	Instigator->SetPurity(false);
	Hidden->FindPinChecked(TEXT("bHidden"))->MakeLinkTo(Damage->FindPinChecked(TEXT("bCanBeDamaged")));
	const std::string HiddenPins = DescribePins(Hidden);
	const std::string DamagePins = DescribePins(Damage);
	const std::string InstigatorPins = DescribePins(Instigator);

	FString FirstBytes;
	ASSERT_NE(SaveAndReload(&FirstBytes), nullptr);
	ASSERT_EQ(EventGraph->Nodes.Num(), 3);
	UK2Node_VariableGet* LoadedHidden = Cast<UK2Node_VariableGet>(EventGraph->Nodes[0]);
	UK2Node_VariableSet* LoadedDamage = Cast<UK2Node_VariableSet>(EventGraph->Nodes[1]);
	UK2Node_VariableGet* LoadedInstigator = Cast<UK2Node_VariableGet>(EventGraph->Nodes[2]);
	ASSERT_TRUE(LoadedHidden && LoadedDamage && LoadedInstigator);
	EXPECT_EQ(LoadedInstigator->GetCurrentVariation(), EGetNodeVariation::ValidatedObject);
	EXPECT_EQ(DescribePins(LoadedHidden), HiddenPins);
	EXPECT_EQ(DescribePins(LoadedDamage), DamagePins);
	EXPECT_EQ(DescribePins(LoadedInstigator), InstigatorPins);
	EXPECT_EQ(LoadedHidden->GetPropertyForVariable(), FindClass(ActorPath)->FindPropertyByName(TEXT("bHidden")));
	EXPECT_EQ(SaveAgainBytes(), FirstBytes);

	for (UK2Node_Variable* Node : {static_cast<UK2Node_Variable*>(LoadedHidden), static_cast<UK2Node_Variable*>(LoadedDamage), static_cast<UK2Node_Variable*>(LoadedInstigator)})
	{
		Node->ReconstructNode();
	}
	EXPECT_EQ(DescribePins(LoadedInstigator), InstigatorPins);
	ASSERT_EQ(LoadedDamage->FindPinChecked(TEXT("bCanBeDamaged"))->LinkedTo.Num(), 1);
	EXPECT_EQ(LoadedDamage->FindPinChecked(TEXT("bCanBeDamaged"))->LinkedTo[0], LoadedHidden->GetValuePin());
	EXPECT_EQ(U8(LoadedDamage->FindPinChecked(TEXT("bCanBeDamaged"))->DefaultValue), "true");
}

TEST_F(NodesAVariables, FollowRenames)
{
	MakeBlueprint(FindClass(ActorPath));
	DeclareHealth(TEXT("Health"));
	MakeSkeleton();
	UK2Node_VariableGet* LoadedGet = PlaceSelf<UK2Node_VariableGet>(TEXT("Health"));
	UK2Node_VariableSet* LoadedSet = PlaceSelf<UK2Node_VariableSet>(TEXT("Health"));
	LoadedSet->FindPinChecked(TEXT("Health"))->DefaultValue = TEXT("75.0");
	LoadedGet->FindPinChecked(TEXT("Health"))->MakeLinkTo(LoadedSet->FindPinChecked(TEXT("Health")));

	// The author renames Health to Vitality: the nodes follow, keeping their wires.
	Blueprint->NewVariables[0].VarName = TEXT("Vitality");
	UClass* Skeleton = MakeSkeleton(TEXT("Vitality"));
	for (UK2Node_Variable* Node : {static_cast<UK2Node_Variable*>(LoadedGet), static_cast<UK2Node_Variable*>(LoadedSet)})
	{
		Node->HandleVariableRenamed(Blueprint, Skeleton, EventGraph, TEXT("Health"), TEXT("Vitality"));
		Node->ReconstructNode();
	}
	EXPECT_EQ(U8(LoadedGet->GetNodeTitle(ENodeTitleType::FullTitle)), "Get Vitality");
	EXPECT_EQ(U8(LoadedSet->GetNodeTitle(ENodeTitleType::FullTitle)), "Set Vitality");
	EXPECT_EQ(DescribePins(LoadedGet), "Vitality:out:real/double, self:in:object (hidden)");
	ASSERT_NE(LoadedGet->GetValuePin(), nullptr);
	ASSERT_EQ(LoadedGet->GetValuePin()->LinkedTo.Num(), 1);
	EXPECT_EQ(LoadedGet->GetValuePin()->LinkedTo[0], LoadedSet->FindPin(TEXT("Vitality"), EGPD_Input));
	EXPECT_EQ(U8(LoadedSet->FindPin(TEXT("Vitality"), EGPD_Input)->DefaultValue), "75.0");

	// A reference still carrying the old name finds the variable by its guid.
	UK2Node_VariableGet* Stale = Place<UK2Node_VariableGet>(EventGraph, [](UK2Node_VariableGet& Node)
	{
		FGuid Guid(11, 22, 33, 44);
		Node.VariableReference.SetSelfMember(TEXT("Health"), Guid);
	});
	EXPECT_EQ(U8(Stale->GetVarName()), "Vitality");
	EXPECT_EQ(DescribePins(Stale), "Vitality:out:real/double, self:in:object (hidden)");
}

TEST_F(NodesAVariables, ReadsOfHiddenOrForeignPrivateMembersFailToCompile)
{
	MakeBlueprint(FindClass(ActorPath));
	UClass* Skeleton = MakeSkeleton();
	FProperty* Secret = Skeleton->FindPropertyByName(TEXT("Secret"));
	FProperty* Health = Skeleton->FindPropertyByName(TEXT("Health"));
	ASSERT_TRUE(Secret && Health);

	UK2Node_VariableGet* GetSecret = PlaceSelf<UK2Node_VariableGet>(TEXT("Secret"));
	UK2Node_VariableGet* GetHealth = PlaceSelf<UK2Node_VariableGet>(TEXT("Health"));
	Secret->ClearPropertyFlags(CPF_BlueprintVisible);
	Health->SetMetaData(FBlueprintMetadata::MD_Private, TEXT("true"));

	FCompilerResultsLog Hidden;
	GetSecret->ValidateNodeDuringCompilation(Hidden);
	EXPECT_EQ(Hidden.NumErrors, 1);
	EXPECT_EQ(Messages(Hidden).rfind("SKEL_BP_Test_C.Secret is not blueprint visible (BlueprintReadOnly or BlueprintReadWrite).", 0), 0u) << Messages(Hidden);

	// Private members are readable in the Blueprint that declares them...
	FCompilerResultsLog Own;
	GetHealth->ValidateNodeDuringCompilation(Own);
	EXPECT_EQ(Own.NumErrors, 0) << Messages(Own);

	// ...and nowhere else.
	Skeleton->ClassGeneratedBy = nullptr;
	FCompilerResultsLog Foreign;
	GetHealth->ValidateNodeDuringCompilation(Foreign);
	Skeleton->ClassGeneratedBy = Blueprint;
	EXPECT_EQ(Foreign.NumErrors, 1);
	EXPECT_EQ(Messages(Foreign).rfind("SKEL_BP_Test_C.Health is private and not accessible in this context.", 0), 0u) << Messages(Foreign);
}
