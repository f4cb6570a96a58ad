#include "ObjectTestTypes.h"

#include <gtest/gtest.h>

// Delegates bound by name to functions of objects, as delegate properties hold them: binding, the
// engine's text forms, and what happens to bindings whose object goes away.

namespace
{
	constexpr EObjectFlags FieldFlags = RF_Public | RF_MarkAsNative | RF_Transient;

	/** Adds a function with one parameter, made by MakeParam, to Class. */
	UFunction* AddFunction(UClass* Class, const TCHAR* Name, FProperty* (*MakeParam)(UFunction*))
	{
		UFunction* Function = NewObject<UFunction>(Class, Name, RF_Public);
		Function->FunctionFlags = FUNC_Public | FUNC_BlueprintCallable;
		FProperty* Param = MakeParam(Function);
		Param->SetPropertyFlags(CPF_Parm);
		Function->AddCppProperty(Param);
		Function->Bind();
		Function->StaticLink(true);
		Class->AddFunctionToFunctionMap(Function, Function->GetFName());
		Function->Next = Class->Children;
		Class->Children = Function;
		return Function;
	}

	struct FDelegateWorld
	{
		UFunction* Signature = nullptr;
		UClass* ReceiverClass = nullptr;
		UClass* SenderClass = nullptr;
		UPackage* Package = nullptr;
		FDelegateProperty* Single = nullptr;
		FMulticastInlineDelegateProperty* Multi = nullptr;
	};

	/** A signature taking one int, a receiver class with a matching and a mismatching function, and a sender class. */
	const FDelegateWorld& GetWorld()
	{
		static FDelegateWorld World;
		if (World.Signature)
		{
			return World;
		}
		UPackage* Script = CreatePackage(TEXT("/Script/DelegateTest"));
		World.Signature = NewObject<UDelegateFunction>(Script, TEXT("OnScored__DelegateSignature"), RF_Public);
		World.Signature->FunctionFlags = FUNC_Delegate | FUNC_MulticastDelegate;
		FIntProperty* SignatureParam = new FIntProperty(World.Signature, TEXT("Points"), FieldFlags);
		SignatureParam->SetPropertyFlags(CPF_Parm);
		World.Signature->AddCppProperty(SignatureParam);
		World.Signature->StaticLink(true);

		World.ReceiverClass = NewObject<UClass>(Script, TEXT("ScoreReceiver"), RF_Public);
		World.ReceiverClass->SetSuperStruct(UObject::StaticClass());
		AddFunction(World.ReceiverClass, TEXT("HandleScore"), [](UFunction* F) -> FProperty* { return new FIntProperty(F, TEXT("Amount"), FieldFlags); });
		AddFunction(World.ReceiverClass, TEXT("HandleName"), [](UFunction* F) -> FProperty* { return new FNameProperty(F, TEXT("Who"), FieldFlags); });
		World.ReceiverClass->Bind();
		World.ReceiverClass->StaticLink(true);

		World.SenderClass = NewObject<UClass>(Script, TEXT("ScoreSender"), RF_Public);
		World.SenderClass->SetSuperStruct(UObject::StaticClass());
		World.Multi = new FMulticastInlineDelegateProperty(World.SenderClass, TEXT("OnScoredMany"), FieldFlags);
		World.Multi->SignatureFunction = World.Signature;
		World.SenderClass->AddCppProperty(World.Multi);
		World.Single = new FDelegateProperty(World.SenderClass, TEXT("OnScored"), FieldFlags);
		World.Single->SignatureFunction = World.Signature;
		World.SenderClass->AddCppProperty(World.Single);
		World.SenderClass->Bind();
		World.SenderClass->StaticLink(true);
		World.Package = CreatePackage(TEXT("/Game/Delegates/Arena"));
		return World;
	}

	FString Export(const FProperty* Property, const UObject* Object)
	{
		FString Result;
		Property->ExportTextItem_InContainer(Result, Object, nullptr, nullptr, PPF_None);
		return Result;
	}

	bool Import(const FProperty* Property, UObject* Object, const TCHAR* Text)
	{
		return Property->ImportText_InContainer(Text, Object, Object, PPF_None) != nullptr;
	}
}

TEST(ScriptDelegates, BindingNeedsALiveObjectWithTheFunction)
{
	const FDelegateWorld& World = GetWorld();
	UObject* Receiver = NewObject<UObject>(World.Package, World.ReceiverClass, TEXT("BindingReceiver"));

	FScriptDelegate Delegate;
	EXPECT_FALSE(Delegate.IsBound());
	EXPECT_EQ(U8(Delegate.ToString<UObject>()), "<Unbound>");

	Delegate.BindUFunction(Receiver, TEXT("NoSuchFunction"));
	EXPECT_FALSE(Delegate.IsBound());
	EXPECT_TRUE(Delegate.IsBoundToObject(Receiver));
	EXPECT_FALSE(Delegate.IsCompactable());

	Delegate.BindUFunction(Receiver, TEXT("HandleScore"));
	EXPECT_TRUE(Delegate.IsBound());
	EXPECT_EQ(U8(Delegate.ToString<UObject>()), "/Game/Delegates/Arena.BindingReceiver.HandleScore");

	// Marked as garbage: no longer bound, but kept until collected.
	Receiver->MarkAsGarbage();
	EXPECT_FALSE(Delegate.IsBound());
	EXPECT_FALSE(Delegate.IsBoundToObject(Receiver));
	EXPECT_TRUE(Delegate.IsBoundToObjectEvenIfUnreachable(Receiver));
	EXPECT_FALSE(Delegate.IsCompactable());
	CollectGarbage(RF_NoFlags);
	EXPECT_TRUE(Delegate.IsCompactable());
	EXPECT_EQ(Delegate.GetUObjectEvenIfUnreachable(), nullptr);
	EXPECT_EQ(Delegate.GetFunctionName(), FName(TEXT("HandleScore")));

	Delegate.Unbind();
	EXPECT_TRUE(Delegate.GetFunctionName().IsNone());
}

TEST(ScriptDelegates, SingleDelegateTextUsesTheObjectName)
{
	const FDelegateWorld& World = GetWorld();
	UObject* Sender = NewObject<UObject>(World.Package, World.SenderClass, TEXT("SingleSender"));
	UObject* Receiver = NewObject<UObject>(World.Package, World.ReceiverClass, TEXT("SingleReceiver"));
	FScriptDelegate& Value = *World.Single->ContainerPtrToValuePtr<FScriptDelegate>(Sender);

	EXPECT_EQ(U8(Export(World.Single, Sender)), "(null).None");

	// The engine writes the object's name, not its path, and finds it again near the owner.
	Value.BindUFunction(Receiver, TEXT("HandleScore"));
	EXPECT_EQ(U8(Export(World.Single, Sender)), "SingleReceiver.HandleScore");
	Value.Unbind();
	ASSERT_TRUE(Import(World.Single, Sender, TEXT("SingleReceiver.HandleScore")));
	EXPECT_EQ(Value.GetUObject(), Receiver);
	EXPECT_EQ(Value.GetFunctionName(), FName(TEXT("HandleScore")));

	// A full path works too; "(null).None" unbinds.
	ASSERT_TRUE(Import(World.Single, Sender, TEXT("(null).None")));
	EXPECT_EQ(Value.GetUObject(), nullptr);
	EXPECT_TRUE(Value.GetFunctionName().IsNone());
	ASSERT_TRUE(Import(World.Single, Sender, TEXT("/Game/Delegates/Arena.SingleReceiver.HandleScore")));
	EXPECT_EQ(Value.GetUObject(), Receiver);

	// A function with other parameters, a missing function or object, and a function name with no object on an
	// owner that lacks it are refused.
	Value.Unbind();
	EXPECT_FALSE(Import(World.Single, Sender, TEXT("SingleReceiver.HandleName")));
	EXPECT_FALSE(Import(World.Single, Sender, TEXT("SingleReceiver.Missing")));
	EXPECT_FALSE(Import(World.Single, Sender, TEXT("NobodyByThatName.HandleScore")));
	EXPECT_FALSE(Import(World.Single, Sender, TEXT("HandleScore")));
	EXPECT_FALSE(Import(World.Single, Sender, TEXT("(null).HandleScore")));
	EXPECT_EQ(Value.GetUObject(), nullptr);
}

TEST(ScriptDelegates, MulticastListsDropEntriesWhoseObjectIsGone)
{
	const FDelegateWorld& World = GetWorld();
	UObject* Sender = NewObject<UObject>(World.Package, World.SenderClass, TEXT("MultiSender"));
	UObject* First = NewObject<UObject>(World.Package, World.ReceiverClass, TEXT("FirstListener"));
	UObject* Second = NewObject<UObject>(World.Package, World.ReceiverClass, TEXT("SecondListener"));
	FMulticastScriptDelegate& Value = *World.Multi->ContainerPtrToValuePtr<FMulticastScriptDelegate>(Sender);

	EXPECT_EQ(U8(Export(World.Multi, Sender)), "()");
	EXPECT_EQ(U8(Value.ToString<UObject>()), "<Unbound>");

	FScriptDelegate ToFirst;
	ToFirst.BindUFunction(First, TEXT("HandleScore"));
	FScriptDelegate ToSecond;
	ToSecond.BindUFunction(Second, TEXT("HandleScore"));
	Value.Add(ToFirst);
	Value.AddUnique(ToSecond);
	Value.AddUnique(ToFirst);
	EXPECT_EQ(Value.GetInvocationList().Num(), 2);
	EXPECT_TRUE(Value.Contains(First, TEXT("HandleScore")));
	EXPECT_TRUE(Value.Contains(ToSecond));
	EXPECT_FALSE(Value.Contains(First, TEXT("HandleName")));
	EXPECT_EQ(U8(Export(World.Multi, Sender)), "(FirstListener.HandleScore,SecondListener.HandleScore)");
	EXPECT_EQ(U8(Value.ToString<UObject>()),
		"[/Game/Delegates/Arena.FirstListener.HandleScore, /Game/Delegates/Arena.SecondListener.HandleScore]");
	EXPECT_EQ(Value.GetAllObjects(), TArray<UObject*>({ First, Second }));

	// Read back: the same list; a bad entry refuses the whole value and leaves it unchanged.
	FMulticastScriptDelegate Copy = Value;
	Value.Clear();
	ASSERT_TRUE(Import(World.Multi, Sender, TEXT("(FirstListener.HandleScore,SecondListener.HandleScore)")));
	EXPECT_EQ(Value, Copy);
	EXPECT_FALSE(Import(World.Multi, Sender, TEXT("(FirstListener.HandleScore,SecondListener.HandleName)")));
	EXPECT_EQ(Value, Copy);
	EXPECT_FALSE(Import(World.Multi, Sender, TEXT("FirstListener.HandleScore")));

	// The first listener goes: its entry is skipped in text while it is garbage, and dropped once collected.
	First->MarkAsGarbage();
	EXPECT_EQ(U8(Export(World.Multi, Sender)), "(SecondListener.HandleScore)");
	EXPECT_EQ(Value.GetInvocationList().Num(), 2);
	CollectGarbage(RF_NoFlags);
	UObject* Third = NewObject<UObject>(World.Package, World.ReceiverClass, TEXT("ThirdListener"));
	FScriptDelegate ToThird;
	ToThird.BindUFunction(Third, TEXT("HandleScore"));
	Value.Add(ToThird);
	ASSERT_EQ(Value.GetInvocationList().Num(), 2);
	EXPECT_EQ(Value.GetAllObjects(), TArray<UObject*>({ Second, Third }));

	Value.Remove(Second, TEXT("HandleScore"));
	EXPECT_EQ(Value.GetAllObjects(), TArray<UObject*>({ Third }));
	Value.RemoveAll(Third);
	EXPECT_FALSE(Value.IsBound());
}
