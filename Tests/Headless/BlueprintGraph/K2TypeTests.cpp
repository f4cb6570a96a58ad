#include "K2TestTypes.h"

#include "UObject/Class.h"
#include "UObject/UnrealType.h"

using namespace K2Test;

namespace
{
	using K2 = UEdGraphSchema_K2;

	class K2DefaultValues : public FK2GraphFixture
	{
	protected:
		UEdGraphPin* InputOf(const FEdGraphPinType& PinType, const TCHAR* Name = TEXT("Value"))
		{
			return AddPin(AddNode(), EGPD_Input, PinType, Name);
		}
	};

	struct FDefaultCase
	{
		const char* Name;
		FEdGraphPinType PinType;
		const TCHAR* Value;
		const char* Error; // empty when accepted
	};
}

TEST_F(K2DefaultValues, LiteralsAreTypedByCategory)
{
	UObject* InputEvent = FindType(TEXT("/Script/Engine.EInputEvent"));
	ASSERT_NE(InputEvent, nullptr);
	const FEdGraphPinType Vector = Type(K2::PC_Struct, TBaseStructure<FVector>::Get());
	const FEdGraphPinType Rotator = Type(K2::PC_Struct, TBaseStructure<FRotator>::Get());
	const FEdGraphPinType Color = Type(K2::PC_Struct, TBaseStructure<FLinearColor>::Get());
	const FEdGraphPinType Transform = Type(K2::PC_Struct, TBaseStructure<FTransform>::Get());

	const FDefaultCase Cases[] = {
		{ "bool word", Type(K2::PC_Boolean), TEXT("true"), "" },
		{ "any text reads as a bool", Type(K2::PC_Boolean), TEXT("maybe"), "" },
		{ "integer", Type(K2::PC_Int), TEXT("-42"), "" },
		{ "integer from words", Type(K2::PC_Int), TEXT("forty"), "Expected a valid number for an integer property" },
		{ "integer with a fraction", Type(K2::PC_Int), TEXT("1.5"), "Expected a valid number for an integer property" },
		{ "int64", Type(K2::PC_Int64), TEXT("9000000000"), "" },
		{ "int64 from words", Type(K2::PC_Int64), TEXT("big"), "Expected a valid number for an integer64 property" },
		{ "byte", Type(K2::PC_Byte), TEXT("255"), "" },
		{ "byte too large", Type(K2::PC_Byte), TEXT("256"), "Expected a value between 0 and 255 for a byte property" },
		{ "byte negative", Type(K2::PC_Byte), TEXT("-1"), "Expected a value between 0 and 255 for a byte property" },
		{ "byte from words", Type(K2::PC_Byte), TEXT("x"), "Expected a valid unsigned number for a byte property" },
		{ "real", Real(K2::PC_Double), TEXT("3.25"), "" },
		{ "real from words", Real(K2::PC_Float), TEXT("pi"), "Expected a valid number for a real property" },
		{ "enum entry", Type(K2::PC_Byte, InputEvent), TEXT("IE_Released"), "" },
		{ "unknown enum entry", Type(K2::PC_Byte, InputEvent), TEXT("IE_Sideways"), "'IE_Sideways' is not a valid enumerant of '<EInputEvent>'" },
		{ "name", Type(K2::PC_Name), TEXT("Anything Goes"), "" },
		{ "string", Type(K2::PC_String), TEXT("(not a struct)"), "" },
		{ "vector", Vector, TEXT("1.0,2.0,3.0"), "" },
		{ "bad vector", Vector, TEXT("1.0,2.0"), "Invalid value for an FVector" },
		{ "rotator", Rotator, TEXT("10.0,20.0,30.0"), "" },
		{ "bad rotator", Rotator, TEXT("sideways"), "Invalid value for an FRotator" },
		{ "linear color", Color, TEXT("(R=1.0,G=0.5,B=0.25,A=1.0)"), "" },
		{ "bad linear color", Color, TEXT("red"), "Invalid value for an FLinearColor" },
		{ "transform", Transform, TEXT("0,0,0|0,0,0|1,1,1"), "" },
		{ "bad transform", Transform, TEXT("here"), "Invalid value for an FTransform" },
		{ "object by an unknown path", Type(K2::PC_Object, EngineClass(TEXT("Actor"))), TEXT("/Game/Nowhere.Nothing"),
			"String NewDefaultValue '/Game/Nowhere.Nothing' specified on object pin 'Value'" },
		{ "soft object path", Type(K2::PC_SoftObject, EngineClass(TEXT("Actor"))), TEXT("/Script/Engine.Actor"), "" },
		{ "class named by a string", Type(K2::PC_Class, EngineClass(TEXT("Actor"))), TEXT("NotAPath"),
			"String NewDefaultValue 'NotAPath' specified on class pin 'Value'" },
	};
	for (const FDefaultCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Name);
		UEdGraphPin* Pin = InputOf(Case.PinType);
		FString Value;
		TObjectPtr<UObject> Object;
		FText Text;
		Schema->GetPinDefaultValuesFromString(Case.PinType, Pin->GetOwningNode(), Case.Value, Value, Object, Text);
		EXPECT_EQ(U8(Schema->IsPinDefaultValid(Pin, Value, Object, Text)), Case.Error);

		// TrySetDefaultValue keeps the old value when the new one is refused.
		Pin->DefaultValue = TEXT("previous");
		Schema->TrySetDefaultValue(*Pin, Case.Value);
		if (Case.Error[0] == '\0')
		{
			EXPECT_NE(U8(Pin->DefaultValue), "previous");
		}
		else
		{
			EXPECT_EQ(U8(Pin->DefaultValue), "previous");
		}
	}
}

TEST_F(K2DefaultValues, BoolsAreStoredAsTheEnginesWords)
{
	UEdGraphPin* Pin = InputOf(Type(K2::PC_Boolean));
	Schema->TrySetDefaultValue(*Pin, TEXT("True"));
	EXPECT_EQ(U8(Pin->DefaultValue), "true");
	Schema->TrySetDefaultValue(*Pin, TEXT("0"));
	EXPECT_EQ(U8(Pin->DefaultValue), "false");
}

TEST_F(K2DefaultValues, ObjectsAndClassesAreFoundByPath)
{
	UClass* Actor = EngineClass(TEXT("Actor"));
	UClass* Pawn = EngineClass(TEXT("Pawn"));
	ASSERT_NE(Pawn, nullptr);
	UEdGraphPin* ClassPin = InputOf(Type(K2::PC_Class, Actor), TEXT("Class"));
	Schema->TrySetDefaultValue(*ClassPin, TEXT("/Script/Engine.Pawn"));
	EXPECT_EQ(ClassPin->DefaultObject.Get(), Pawn);

	// A class outside the pin's hierarchy is refused with the engine's text.
	UEdGraphPin* PawnClassPin = InputOf(Type(K2::PC_Class, Pawn), TEXT("Class"));
	EXPECT_EQ(U8(Schema->IsPinDefaultValid(PawnClassPin, FString(), Actor, FText::GetEmpty())),
		"/Script/Engine.Actor isn't a valid subclass of Pawn (specified on pin Class)");
	Schema->TrySetDefaultObject(*PawnClassPin, Actor);
	EXPECT_EQ(PawnClassPin->DefaultObject.Get(), nullptr);
	Schema->TrySetDefaultObject(*PawnClassPin, EngineClass(TEXT("Character")));
	EXPECT_EQ(PawnClassPin->DefaultObject.Get(), EngineClass(TEXT("Character")));
}

TEST_F(K2DefaultValues, PinsThatMustBeWiredRefuseEveryLiteral)
{
	struct FWiredCase
	{
		FEdGraphPinType PinType;
		const char* Error;
	};
	FEdGraphPinType ByRef = Type(K2::PC_Int);
	ByRef.bIsReference = true;
	const FWiredCase Cases[] = {
		{ ArrayOf(Type(K2::PC_Int)), "Array inputs (like 'Value') must have an input wired into them (try connecting a MakeArray node)." },
		{ SetOf(Type(K2::PC_Int)), "Set inputs (like 'Value') must have an input wired into them (try connecting a MakeSet node)." },
		{ MapOf(Type(K2::PC_Name), Type(K2::PC_Int)), "Map inputs (like 'Value') must have an input wired into them (try connecting a MakeMap node)." },
		{ ByRef, "'Value' in action 'K2TestNode' must have an input wired into it (\"by ref\" params expect a valid input to operate on)." },
	};
	for (const FWiredCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Error);
		UEdGraphPin* Pin = InputOf(Case.PinType);
		EXPECT_EQ(U8(Schema->IsPinDefaultValid(Pin, TEXT("1"), nullptr, FText::GetEmpty())), Case.Error);
		// Even an empty value: the pin needs a wire.
		EXPECT_EQ(U8(Schema->IsPinDefaultValid(Pin, FString(), nullptr, FText::GetEmpty())), Case.Error);
	}
	EXPECT_FALSE(Schema->IsPinDefaultValid(nullptr, FString(), nullptr, FText::GetEmpty()).IsEmpty());
}

TEST(K2TypeText, PinTypesReadAsTheEditorShowsThem)
{
	StartCatalogue();
	struct FTextCase
	{
		FEdGraphPinType PinType;
		const char* Text;
	};
	FEdGraphPinType ByRef = Type(K2::PC_String);
	ByRef.bIsReference = true;
	const FTextCase Cases[] = {
		{ Type(K2::PC_Exec), "Exec" },
		{ Type(K2::PC_Boolean), "Boolean" },
		{ Type(K2::PC_Int), "Integer" },
		{ Type(K2::PC_Int64), "Integer64" },
		{ Type(K2::PC_Byte), "Byte" },
		{ Real(K2::PC_Float), "Float (single-precision)" },
		{ Real(K2::PC_Double), "Float (double-precision)" },
		{ Type(K2::PC_Name), "Name" },
		{ Type(K2::PC_String), "String" },
		{ Type(K2::PC_Text), "Text" },
		{ Type(K2::PC_Wildcard), "Wildcard" },
		{ Type(K2::PC_Object, EngineClass(TEXT("Actor"))), "Actor Object Reference" },
		{ Type(K2::PC_Object, UObject::StaticClass()), "Object Reference" },
		{ Type(K2::PC_Class, EngineClass(TEXT("Pawn"))), "Pawn Class Reference" },
		{ Type(K2::PC_SoftObject, EngineClass(TEXT("Actor"))), "Actor Soft Object Reference" },
		{ Type(K2::PC_SoftClass, EngineClass(TEXT("Actor"))), "Actor Soft Class Reference" },
		{ Type(K2::PC_Interface, EngineClass(TEXT("NavAgentInterface"))), "Nav Agent Interface Interface" },
		{ Type(K2::PC_Byte, FindType(TEXT("/Script/Engine.EInputEvent"))), "EInputEvent Enum" },
		{ Type(K2::PC_Struct, TBaseStructure<FVector>::Get()), "Vector" },
		{ Type(K2::PC_Struct, TBaseStructure<FRotator>::Get()), "Rotator" },
		{ Type(K2::PC_Struct, TBaseStructure<FTransform>::Get()), "Transform" },
		{ Type(K2::PC_Struct, TBaseStructure<FLinearColor>::Get()), "Linear Color Structure" },
		{ Type(K2::PC_Object, UObject::StaticClass(), K2::PSC_Self), "Object Reference" },
		{ ArrayOf(Type(K2::PC_Int)), "Array of Integers" },
		{ SetOf(Type(K2::PC_Name)), "Set of Names" },
		{ MapOf(Type(K2::PC_String), Type(K2::PC_Object, EngineClass(TEXT("Actor")))), "Map of Strings to Actor Object References" },
		{ ByRef, "String (by ref)" },
	};
	for (const FTextCase& Case : Cases)
	{
		EXPECT_EQ(U8(UEdGraphSchema_K2::TypeToText(Case.PinType)), Case.Text);
	}
	EXPECT_EQ(U8(UEdGraphSchema_K2::GetCategoryText(K2::PC_Real)), "Float");
	EXPECT_EQ(U8(UEdGraphSchema_K2::GetCategoryText(K2::PC_Real, K2::PC_Double, true)), "Float (double-precision)");
}

TEST_F(K2DefaultValues, NodesWithoutAKnownLayoutAreEstimatedAtTheBaseHeight)
{
	UK2TestNode* Node = AddNode();
	EXPECT_EQ(UEdGraphSchema_K2::EstimateNodeHeight(Node), 48.0f);
	for (int32 Index = 0; Index < 6; ++Index)
	{
		AddPin(Node, EGPD_Input, Type(K2::PC_Int), *FString::Printf(TEXT("In%d"), Index));
	}
	EXPECT_EQ(UEdGraphSchema_K2::EstimateNodeHeight(Node), 48.0f);
	EXPECT_EQ(UEdGraphSchema_K2::EstimateNodeHeight(nullptr), 0.0f);
}

namespace
{
	const FProperty* PropertyOf(const TCHAR* ClassName, const TCHAR* PropertyName)
	{
		const UClass* Class = EngineClass(ClassName);
		return Class ? Class->FindPropertyByName(FName(PropertyName)) : nullptr;
	}
}

TEST(K2PropertyTypes, CataloguePropertiesBecomeTheirPinTypes)
{
	StartCatalogue();
	const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
	struct FPropertyCase
	{
		const TCHAR* Class;
		const TCHAR* Property;
		FEdGraphPinType Expected;
	};
	const FPropertyCase Cases[] = {
		{ TEXT("Actor"), TEXT("bHidden"), Type(K2::PC_Boolean) },
		{ TEXT("Actor"), TEXT("InitialLifeSpan"), Real(K2::PC_Float) },
		{ TEXT("Character"), TEXT("JumpMaxCount"), Type(K2::PC_Int) },
		{ TEXT("Actor"), TEXT("Tags"), ArrayOf(Type(K2::PC_Name)) },
		{ TEXT("Actor"), TEXT("RootComponent"), Type(K2::PC_Object, EngineClass(TEXT("SceneComponent"))) },
		{ TEXT("Actor"), TEXT("Instigator"), Type(K2::PC_Object, EngineClass(TEXT("Pawn"))) },
		{ TEXT("Pawn"), TEXT("AIControllerClass"), Type(K2::PC_Class, EngineClass(TEXT("Controller"))) },
		// Enums are bytes with the enum as their sub-category object.
		{ TEXT("Actor"), TEXT("SpawnCollisionHandlingMethod"), Type(K2::PC_Byte, FindType(TEXT("/Script/Engine.ESpawnActorCollisionHandlingMethod"))) },
	};
	for (const FPropertyCase& Case : Cases)
	{
		SCOPED_TRACE(U8(FString(Case.Property)));
		const FProperty* Property = PropertyOf(Case.Class, Case.Property);
		ASSERT_NE(Property, nullptr);
		FEdGraphPinType PinType;
		ASSERT_TRUE(Schema->ConvertPropertyToPinType(Property, PinType));
		EXPECT_EQ(PinType.PinCategory, Case.Expected.PinCategory);
		EXPECT_EQ(PinType.PinSubCategory, Case.Expected.PinSubCategory);
		EXPECT_EQ(PinType.PinSubCategoryObject.Get(), Case.Expected.PinSubCategoryObject.Get());
		EXPECT_EQ(PinType.ContainerType, Case.Expected.ContainerType);

		// The property made back from the pin type reads as the same pin type.
		UClass* Scope = NewObject<UClass>(GetTransientPackage());
		FProperty* Made = UEdGraphSchema_K2::CreatePropertyForPinType(Scope, FName(Case.Property), PinType);
		ASSERT_NE(Made, nullptr);
		FEdGraphPinType RoundTrip;
		ASSERT_TRUE(Schema->ConvertPropertyToPinType(Made, RoundTrip));
		EXPECT_EQ(RoundTrip.PinCategory, PinType.PinCategory);
		EXPECT_EQ(RoundTrip.PinSubCategory, PinType.PinSubCategory);
		EXPECT_EQ(RoundTrip.PinSubCategoryObject.Get(), PinType.PinSubCategoryObject.Get());
		EXPECT_EQ(RoundTrip.ContainerType, PinType.ContainerType);
	}
	// A property's own text names struct and object types like pins, other kinds by their property class.
	EXPECT_EQ(U8(UEdGraphSchema_K2::TypeToText(PropertyOf(TEXT("Actor"), TEXT("RootComponent")))), "Scene Component Object Reference");
	EXPECT_EQ(U8(UEdGraphSchema_K2::TypeToText(PropertyOf(TEXT("Pawn"), TEXT("AIControllerClass")))), "Controller Class Reference");
	EXPECT_EQ(U8(UEdGraphSchema_K2::TypeToText(PropertyOf(TEXT("Actor"), TEXT("bHidden")))), "BoolProperty");
	EXPECT_EQ(U8(UEdGraphSchema_K2::TypeToText(PropertyOf(TEXT("Actor"), TEXT("Tags")))), "Array of NameProperty");

	// Types that no property holds.
	UClass* Scope = NewObject<UClass>(GetTransientPackage());
	EXPECT_EQ(UEdGraphSchema_K2::CreatePropertyForPinType(Scope, TEXT("Exec"), Type(K2::PC_Exec)), nullptr);
	EXPECT_EQ(UEdGraphSchema_K2::CreatePropertyForPinType(Scope, TEXT("Any"), Type(K2::PC_Wildcard)), nullptr);
}

TEST(K2Functions, DelegatesBindCallableFunctionsThatNeitherWaitNorArePure)
{
	StartCatalogue();
	UClass* Library = EngineClass(TEXT("KismetSystemLibrary"));
	ASSERT_NE(Library, nullptr);
	const UFunction* PrintString = Library->FindFunctionByName(TEXT("PrintString"));
	const UFunction* Delay = Library->FindFunctionByName(TEXT("Delay"));
	const UFunction* IsValid = Library->FindFunctionByName(TEXT("IsValid"));
	ASSERT_NE(PrintString, nullptr);
	ASSERT_NE(Delay, nullptr);
	ASSERT_NE(IsValid, nullptr);
	EXPECT_TRUE(UEdGraphSchema_K2::FunctionCanBeUsedInDelegate(PrintString));
	EXPECT_FALSE(UEdGraphSchema_K2::FunctionCanBeUsedInDelegate(Delay));
	EXPECT_FALSE(UEdGraphSchema_K2::FunctionCanBeUsedInDelegate(IsValid));
	EXPECT_FALSE(UEdGraphSchema_K2::FunctionCanBeUsedInDelegate(nullptr));

	// Events: overridable functions without outputs. ReceiveBeginPlay is one; PrintString is not overridable.
	const UFunction* BeginPlay = EngineClass(TEXT("Actor"))->FindFunctionByName(TEXT("ReceiveBeginPlay"));
	ASSERT_NE(BeginPlay, nullptr);
	EXPECT_TRUE(UEdGraphSchema_K2::FunctionCanBePlacedAsEvent(BeginPlay));
	EXPECT_FALSE(UEdGraphSchema_K2::FunctionCanBePlacedAsEvent(PrintString));
	EXPECT_FALSE(UEdGraphSchema_K2::FunctionCanBePlacedAsEvent(nullptr));
}
