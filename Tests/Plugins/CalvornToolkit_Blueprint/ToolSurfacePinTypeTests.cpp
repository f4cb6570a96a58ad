#include "ToolSurfaceTestSupport.h"

#include "AssetOperationBase.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "GameFramework/Actor.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

using namespace ToolSurfaceTests;

namespace
{
	using K2 = UEdGraphSchema_K2;

	UObject* FindType(const TCHAR* Path)
	{
		UObject* Object = StaticFindObject(UObject::StaticClass(), nullptr, Path);
		EXPECT_NE(Object, nullptr) << U8(Path);
		return Object;
	}

	FEdGraphPinType MakeType(FName Category, FName SubCategory = NAME_None, UObject* Object = nullptr, EPinContainerType Container = EPinContainerType::None)
	{
		FEdGraphPinType Type;
		Type.PinCategory = Category;
		Type.PinSubCategory = SubCategory;
		Type.PinSubCategoryObject = Object;
		Type.ContainerType = Container;
		return Type;
	}

	FEdGraphPinType WithValue(FEdGraphPinType Type, FName Category, FName SubCategory = NAME_None, UObject* Object = nullptr)
	{
		Type.PinValueType.TerminalCategory = Category;
		Type.PinValueType.TerminalSubCategory = SubCategory;
		Type.PinValueType.TerminalSubCategoryObject = Object;
		return Type;
	}

	bool FromJsonText(const FString& Text, FEdGraphPinType& Out, FString& Error)
	{
		return FAssetOperationBase::ConvertJsonToEdGraphPinType(ParseJson(Text), Out, &Error);
	}
}

TEST(ToolSurfacePinTypes, EveryCategoryAndContainerSurvivesARoundTrip)
{
	UObject* Actor = FindType(TEXT("/Script/Engine.Actor"));
	UObject* Vector = FindType(TEXT("/Script/CoreUObject.Vector"));
	UObject* Channel = FindType(TEXT("/Script/Engine.ECollisionChannel"));
	UObject* TeamInterface = FindType(TEXT("/Script/AIModule.GenericTeamAgentInterface"));

	TArray<FEdGraphPinType> Types = {
		MakeType(K2::PC_Boolean), MakeType(K2::PC_Byte), MakeType(K2::PC_Byte, NAME_None, Channel), MakeType(K2::PC_Int),
		MakeType(K2::PC_Int64), MakeType(K2::PC_Real, K2::PC_Float), MakeType(K2::PC_Real, K2::PC_Double), MakeType(K2::PC_Name),
		MakeType(K2::PC_String), MakeType(K2::PC_Text), MakeType(K2::PC_Object, NAME_None, Actor), MakeType(K2::PC_Object, K2::PSC_Self),
		MakeType(K2::PC_Class, NAME_None, Actor), MakeType(K2::PC_SoftObject, NAME_None, Actor), MakeType(K2::PC_SoftClass, NAME_None, Actor),
		MakeType(K2::PC_Interface, NAME_None, TeamInterface), MakeType(K2::PC_Struct, NAME_None, Vector), MakeType(K2::PC_Enum, NAME_None, Channel),
		MakeType(K2::PC_Delegate), MakeType(K2::PC_MCDelegate), MakeType(K2::PC_Exec), MakeType(K2::PC_Wildcard), MakeType(K2::PC_FieldPath),
		MakeType(K2::PC_Int, NAME_None, nullptr, EPinContainerType::Array), MakeType(K2::PC_Struct, NAME_None, Vector, EPinContainerType::Array),
		MakeType(K2::PC_Name, NAME_None, nullptr, EPinContainerType::Set), MakeType(K2::PC_Object, NAME_None, Actor, EPinContainerType::Set),
		WithValue(MakeType(K2::PC_String, NAME_None, nullptr, EPinContainerType::Map), K2::PC_Real, K2::PC_Double),
		WithValue(MakeType(K2::PC_Name, NAME_None, nullptr, EPinContainerType::Map), K2::PC_Object, NAME_None, Actor),
		WithValue(MakeType(K2::PC_Byte, NAME_None, Channel, EPinContainerType::Map), K2::PC_Struct, NAME_None, Vector),
	};
	FEdGraphPinType Flagged = MakeType(K2::PC_Object, NAME_None, Actor);
	Flagged.bIsReference = true;
	Flagged.bIsConst = true;
	Flagged.bIsWeakPointer = true;
	Flagged.bIsUObjectWrapper = true;
	Types.Add(Flagged);
	FEdGraphPinType FlaggedMap = WithValue(MakeType(K2::PC_Int, NAME_None, nullptr, EPinContainerType::Map), K2::PC_Class, NAME_None, Actor);
	FlaggedMap.PinValueType.bTerminalIsUObjectWrapper = true;
	FlaggedMap.PinValueType.bTerminalIsConst = true;
	Types.Add(FlaggedMap);

	for (const FEdGraphPinType& Type : Types)
	{
		const TSharedPtr<FJsonObject> Json = FAssetOperationBase::ConvertEdGraphPinTypeToJson(Type);
		const FString Text = FAssetOperationBase::SerializeJson(Json);
		SCOPED_TRACE(U8(Text));
		FEdGraphPinType Back;
		FString Error;
		ASSERT_TRUE(FAssetOperationBase::ConvertJsonToEdGraphPinType(Json, Back, &Error)) << U8(Error);
		EXPECT_TRUE(Back == Type);
		// Printing what was read gives the same text: the form is stable.
		EXPECT_EQ(FAssetOperationBase::SerializeJson(FAssetOperationBase::ConvertEdGraphPinTypeToJson(Back)), Text);
	}
}

TEST(ToolSurfacePinTypes, TheJsonFormNamesTypesAsClientsWriteThem)
{
	FEdGraphPinType Map = WithValue(MakeType(K2::PC_String, NAME_None, nullptr, EPinContainerType::Map), K2::PC_Struct, NAME_None, FindType(TEXT("/Script/CoreUObject.Vector")));
	Map.bIsReference = true;
	EXPECT_EQ(FAssetOperationBase::SerializeJson(FAssetOperationBase::ConvertEdGraphPinTypeToJson(Map)),
		TEXT("{\"category\":\"string\",\"sub_category\":\"\",\"sub_category_object\":\"\",\"container_type\":\"map\",\"is_reference\":true,")
		TEXT("\"value_type\":{\"category\":\"struct\",\"sub_category\":\"\",\"sub_category_object\":\"/Script/CoreUObject.Vector\"}}"));
	EXPECT_EQ(FAssetOperationBase::SerializeJson(FAssetOperationBase::ConvertEdGraphPinTypeToJson(MakeType(K2::PC_Real, K2::PC_Float))),
		TEXT("{\"category\":\"real\",\"sub_category\":\"float\",\"sub_category_object\":\"\",\"container_type\":\"none\"}"));
}

TEST(ToolSurfacePinTypes, RequestsAreReadAsTheEditorStoresTypes)
{
	UObject* Actor = FindType(TEXT("/Script/Engine.Actor"));
	UObject* Vector = FindType(TEXT("/Script/CoreUObject.Vector"));
	UObject* Channel = FindType(TEXT("/Script/Engine.ECollisionChannel"));
	const struct
	{
		const TCHAR* Json;
		FEdGraphPinType Expected;
	} Cases[] = {
		{TEXT(R"({"category": "float"})"), MakeType(K2::PC_Real, K2::PC_Float)},
		{TEXT(R"({"category": "Double"})"), MakeType(K2::PC_Real, K2::PC_Double)},
		{TEXT(R"({"category": "double", "sub_category": "float"})"), MakeType(K2::PC_Real, K2::PC_Float)},
		{TEXT(R"({"category": "real"})"), MakeType(K2::PC_Real, K2::PC_Double)},
		{TEXT(R"({"category": "Boolean"})"), MakeType(K2::PC_Boolean)},
		{TEXT(R"({"category": "integer", "container": "Array"})"), MakeType(K2::PC_Int, NAME_None, nullptr, EPinContainerType::Array)},
		{TEXT(R"({"category": "int", "container": "set", "container_type": "array"})"), MakeType(K2::PC_Int, NAME_None, nullptr, EPinContainerType::Array)},
		{TEXT(R"({"category": "int", "container_type": "none", "container": "set"})"), MakeType(K2::PC_Int)},
		{TEXT(R"({"category": "int", "container_type": "list"})"), MakeType(K2::PC_Int)},
		{TEXT(R"({"category": "object", "sub_category_object": "Actor"})"), MakeType(K2::PC_Object, NAME_None, Actor)},
		{TEXT(R"({"category": "object", "sub_category_object": "AActor"})"), MakeType(K2::PC_Object, NAME_None, Actor)},
		{TEXT(R"({"category": "class", "sub_category_object": "/Script/Engine.Actor"})"), MakeType(K2::PC_Class, NAME_None, Actor)},
		{TEXT(R"({"category": "struct", "sub_category_object": "Vector"})"), MakeType(K2::PC_Struct, NAME_None, Vector)},
		{TEXT(R"({"category": "struct", "sub_category_object": "FVector"})"), MakeType(K2::PC_Struct, NAME_None, Vector)},
		{TEXT(R"({"category": "byte", "sub_category_object": "ECollisionChannel"})"), MakeType(K2::PC_Byte, NAME_None, Channel)},
		{TEXT(R"({"category": "byte", "sub_category_object": ""})"), MakeType(K2::PC_Byte)},
		{TEXT(R"({"category": "object", "sub_category": "self"})"), MakeType(K2::PC_Object, K2::PSC_Self)},
		{TEXT(R"({"category": "name", "container_type": "map", "value_type": {"category": "float"}})"),
			WithValue(MakeType(K2::PC_Name, NAME_None, nullptr, EPinContainerType::Map), K2::PC_Real, K2::PC_Float)},
	};
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Json));
		FEdGraphPinType Type;
		FString Error;
		ASSERT_TRUE(FromJsonText(Case.Json, Type, Error)) << U8(Error);
		EXPECT_TRUE(Type == Case.Expected) << U8(FAssetOperationBase::SerializeJson(FAssetOperationBase::ConvertEdGraphPinTypeToJson(Type)));
	}
}

TEST(ToolSurfacePinTypes, BadTypesAreRefusedWithTheirReason)
{
	const struct
	{
		const TCHAR* Json;
		const char* ErrorPart;
	} Cases[] = {
		{TEXT(R"({})"), "no 'category'"},
		{TEXT(R"({"category": ""})"), "no 'category'"},
		{TEXT(R"({"category": "quaternion"})"), "unknown pin category 'quaternion'"},
		{TEXT(R"({"category": "struct"})"), "needs a sub_category_object"},
		{TEXT(R"({"category": "object"})"), "needs a sub_category_object"},
		{TEXT(R"({"category": "enum"})"), "needs a sub_category_object"},
		{TEXT(R"({"category": "struct", "sub_category_object": "NoSuchStructAnywhere"})"), "no struct named 'NoSuchStructAnywhere'"},
		{TEXT(R"({"category": "struct", "sub_category_object": "Actor"})"), "no struct named 'Actor'"},
		{TEXT(R"({"category": "object", "sub_category_object": "/Game/Missing/BP_Nothing"})"), "no class named"},
		{TEXT(R"({"category": "int", "sub_category_object": "Actor"})"), "takes no sub_category_object"},
		{TEXT(R"({"category": "real", "sub_category": "half"})"), "'float' or 'double'"},
		{TEXT(R"({"category": "string", "container_type": "map"})"), "'value_type'"},
		{TEXT(R"({"category": "string", "container_type": "map", "value_type": {"category": "nope"}})"), "map value type: unknown pin category"},
	};
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Json));
		FEdGraphPinType Type = MakeType(K2::PC_Text);
		FString Error;
		EXPECT_FALSE(FromJsonText(Case.Json, Type, Error));
		EXPECT_NE(U8(Error).find(Case.ErrorPart), std::string::npos) << U8(Error);
		EXPECT_TRUE(Type == MakeType(K2::PC_Text)) << "the output is left alone on failure";
	}
	FEdGraphPinType Type;
	EXPECT_FALSE(FAssetOperationBase::ConvertJsonToEdGraphPinType(nullptr, Type));
}

TEST(ToolSurfacePinTypes, PropertiesGiveThePinTypeTheEditorShows)
{
	// Looked up by path, as tools reach classes: the lookup is what completes native classes with the catalogue's
	// members, so a test run on its own sees them too.
	UClass* ActorClass = FindObject<UClass>(nullptr, TEXT("/Script/Engine.Actor"));
	ASSERT_EQ(ActorClass, AActor::StaticClass());
	const FProperty* Hidden = ActorClass->FindPropertyByName(TEXT("bHidden"));
	ASSERT_NE(Hidden, nullptr);
	FEdGraphPinType Type;
	ASSERT_TRUE(FAssetOperationBase::ConvertPropertyToEdGraphPinType(Hidden, Type));
	EXPECT_EQ(Type.PinCategory, K2::PC_Boolean);
	EXPECT_FALSE(FAssetOperationBase::ConvertPropertyToEdGraphPinType(nullptr, Type));
}

TEST(ToolSurfacePropertyText, ValuesReadAndWriteInTheEditorsTextForm)
{
	AActor* Actor = NewObject<AActor>(GetTransientPackage(), AActor::StaticClass(), FName(TEXT("PropertyTextActor")));
	ASSERT_NE(Actor, nullptr);

	FString Value;
	ASSERT_TRUE(FAssetOperationBase::GetPropertyValueAsString(Actor, TEXT("bHidden"), Value));
	EXPECT_EQ(Value, TEXT("False"));

	FString Error;
	const struct
	{
		const TCHAR* Property;
		const TCHAR* Text;
		bool bAccepted;
		const TCHAR* ReadBack;
	} Cases[] = {
		{TEXT("bHidden"), TEXT("true"), true, TEXT("True")},
		{TEXT("bhidden"), TEXT("False"), true, TEXT("False")},
		{TEXT("bHidden"), TEXT("  True  "), true, TEXT("True")},
		{TEXT("InitialLifeSpan"), TEXT("2.5"), true, TEXT("2.500000")},
		{TEXT("InitialLifeSpan"), TEXT("2.5 apples"), false, TEXT("2.500000")},
		{TEXT("InitialLifeSpan"), TEXT("lots"), false, TEXT("2.500000")},
	};
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(FString(Case.Property) + TEXT(" = ") + Case.Text));
		Error.Reset();
		EXPECT_EQ(FAssetOperationBase::SetPropertyValueAsString(Actor, Case.Property, Case.Text, Error), Case.bAccepted) << U8(Error);
		EXPECT_EQ(Case.bAccepted, Error.IsEmpty()) << U8(Error);
		ASSERT_TRUE(FAssetOperationBase::GetPropertyValueAsString(Actor, Case.Property, Value));
		EXPECT_EQ(Value, Case.ReadBack);
	}

	EXPECT_FALSE(FAssetOperationBase::SetPropertyValueAsString(Actor, TEXT("NoSuchProperty"), TEXT("1"), Error));
	EXPECT_NE(U8(Error).find("no property named 'NoSuchProperty'"), std::string::npos) << U8(Error);
	EXPECT_FALSE(FAssetOperationBase::SetPropertyValueAsString(nullptr, TEXT("bHidden"), TEXT("1"), Error));
	EXPECT_FALSE(FAssetOperationBase::GetPropertyValueAsString(Actor, TEXT("NoSuchProperty"), Value));
	EXPECT_EQ(FAssetOperationBase::GetPropertyValueAsString(nullptr, AActor::StaticClass()->FindPropertyByName(TEXT("bHidden"))), TEXT(""));
	// A property of another class is not read off this object.
	const FProperty* Foreign = UClass::StaticClass()->FindPropertyByName(TEXT("ClassFlags"));
	if (Foreign)
	{
		EXPECT_EQ(FAssetOperationBase::GetPropertyValueAsString(Actor, Foreign), TEXT(""));
	}
}
