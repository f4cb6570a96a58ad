#pragma once

// Shared by the K2 schema suites: a Blueprint node that carries whatever pins a test gives it, a graph ruled by
// the K2 schema, and short ways to name pin types and catalogue types.

#include <gtest/gtest.h>

#include <string>

#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "K2Node.h"
#include "Modules/ModuleManager.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

/** A node with no pins of its own; tests add them. It can veto links and accept several targets like a call node. */
class UK2TestNode : public UK2Node
{
	DECLARE_CLASS(UK2TestNode, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraphTests"), NO_API)

public:
	bool bMultipleSelfs = false;
	FString Veto;

	virtual bool AllowMultipleSelfs(bool bInputAsArray) const override { return bMultipleSelfs; }
	virtual bool IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const override
	{
		if (Veto.IsEmpty())
		{
			return false;
		}
		OutReason = Veto;
		return true;
	}
};

namespace K2Test
{
	inline std::string U8(const FString& Text) { return FStringToUTF8(Text); }
	inline std::string U8(const FText& Text) { return U8(Text.ToString()); }

	inline void StartCatalogue() { FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue")); }

	inline UClass* EngineClass(const TCHAR* Name)
	{
		StartCatalogue();
		return FindObject<UClass>(nullptr, *FString::Printf(TEXT("/Script/Engine.%s"), Name));
	}

	inline UObject* FindType(const TCHAR* Path)
	{
		StartCatalogue();
		return StaticFindObject(UObject::StaticClass(), nullptr, Path);
	}

	inline FEdGraphPinType Type(FName Category, UObject* SubCategoryObject = nullptr, FName SubCategory = NAME_None, EPinContainerType Container = EPinContainerType::None)
	{
		FEdGraphPinType Result;
		Result.PinCategory = Category;
		Result.PinSubCategory = SubCategory;
		Result.PinSubCategoryObject = SubCategoryObject;
		Result.ContainerType = Container;
		return Result;
	}

	inline FEdGraphPinType Real(FName Precision) { return Type(UEdGraphSchema_K2::PC_Real, nullptr, Precision); }

	inline FEdGraphPinType ArrayOf(FEdGraphPinType Inner)
	{
		Inner.ContainerType = EPinContainerType::Array;
		return Inner;
	}

	inline FEdGraphPinType SetOf(FEdGraphPinType Inner)
	{
		Inner.ContainerType = EPinContainerType::Set;
		return Inner;
	}

	inline FEdGraphPinType MapOf(FEdGraphPinType Key, const FEdGraphPinType& Value)
	{
		Key.ContainerType = EPinContainerType::Map;
		Key.PinValueType = FEdGraphTerminalType::FromPinType(Value);
		return Key;
	}

	/** A graph under the K2 schema in the transient package, with helpers to place test nodes and pins. */
	class FK2GraphFixture : public ::testing::Test
	{
	protected:
		static void SetUpTestSuite() { StartCatalogue(); }

		void SetUp() override
		{
			Graph = NewObject<UEdGraph>(GetTransientPackage());
			Graph->Schema = UEdGraphSchema_K2::StaticClass();
			Schema = GetDefault<UEdGraphSchema_K2>();
		}

		UK2TestNode* AddNode()
		{
			return static_cast<UK2TestNode*>(Graph->CreateNode(UK2TestNode::StaticClass(), false, false));
		}

		UEdGraphPin* AddPin(UEdGraphNode* Node, EEdGraphPinDirection Direction, const FEdGraphPinType& PinType, const TCHAR* Name)
		{
			return Node->CreatePin(Direction, PinType, FName(Name));
		}

		UEdGraph* Graph = nullptr;
		const UEdGraphSchema_K2* Schema = nullptr;
	};
}
