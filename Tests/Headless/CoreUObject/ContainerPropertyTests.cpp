#include "ObjectTestTypes.h"

#include <gtest/gtest.h>

// Arrays, sets and maps driven through reflection. Strings longer than the small-string buffer are
// used on purpose: a container that moved them as raw bytes would leave them pointing at freed memory.

namespace
{
	constexpr EObjectFlags FieldFlags = RF_Public | RF_MarkAsNative | RF_Transient;

	FString LongText(int32 Index)
	{
		return FString::Printf(TEXT("A string long enough to live on the heap, number %d"), Index);
	}
}

TEST(ContainerProperties, NativeArrayGrowsThroughTheHelperWithoutCorruptingStrings)
{
	UTestReflectedObject* Object = NewObject<UTestReflectedObject>();
	FArrayProperty* Notes = CastField<FArrayProperty>(UTestReflectedObject::StaticClass()->FindPropertyByName(TEXT("Notes")));
	ASSERT_NE(Notes, nullptr);
	Object->Notes.Add(LongText(-1));
	{
		FScriptArrayHelper_InContainer Helper(Notes, Object);
		EXPECT_EQ(Helper.Num(), 1);
		for (int32 Index = 0; Index < 300; ++Index)
		{
			const int32 Added = Helper.AddValue();
			*(FString*)Helper.GetRawPtr(Added) = LongText(Index);
		}
		Helper.InsertValues(1, 2);
		*(FString*)Helper.GetRawPtr(1) = TEXT("inserted");
		Helper.RemoveValues(50, 10);
		Helper.SwapValues(0, 2);
	}
	// The native TArray sees what the helper did: the layouts are the same.
	ASSERT_EQ(Object->Notes.Num(), 1 + 300 + 2 - 10);
	EXPECT_EQ(U8(Object->Notes[2]), U8(LongText(-1)));
	EXPECT_EQ(U8(Object->Notes[0]), "");
	EXPECT_EQ(U8(Object->Notes[1]), "inserted");
	EXPECT_EQ(U8(Object->Notes[3]), U8(LongText(0)));
	EXPECT_EQ(U8(Object->Notes[49]), U8(LongText(46)));
	EXPECT_EQ(U8(Object->Notes[50]), U8(LongText(57)));
	EXPECT_EQ(U8(Object->Notes.Last()), U8(LongText(299)));
	// And the helper sees what the native array does.
	Object->Notes.Add(TEXT("native"));
	Object->Notes.RemoveAt(0);
	FScriptArrayHelper_InContainer Helper(Notes, Object);
	EXPECT_EQ(Helper.Num(), Object->Notes.Num());
	EXPECT_EQ(U8(*(const FString*)Helper.GetRawPtr(Helper.Num() - 1)), "native");
	Helper.EmptyValues();
	EXPECT_EQ(Object->Notes.Num(), 0);
}

TEST(ContainerProperties, CopyAndCompareCompleteValues)
{
	UTestReflectedObject* A = NewObject<UTestReflectedObject>();
	UTestReflectedObject* B = NewObject<UTestReflectedObject>();
	for (int32 Index = 0; Index < 40; ++Index)
	{
		A->Notes.Add(LongText(Index));
	}
	FProperty* Notes = UTestReflectedObject::StaticClass()->FindPropertyByName(TEXT("Notes"));
	EXPECT_FALSE(Notes->Identical_InContainer(A, B));
	Notes->CopyCompleteValue_InContainer(B, A);
	EXPECT_TRUE(Notes->Identical_InContainer(A, B));
	A->Notes.Empty();
	ASSERT_EQ(B->Notes.Num(), 40);
	EXPECT_EQ(U8(B->Notes[39]), U8(LongText(39)));
	// Element comparison ignores case, as FString's does.
	A->Notes = { TEXT("Value") };
	B->Notes = { TEXT("VALUE") };
	EXPECT_TRUE(Notes->Identical_InContainer(A, B));
	B->Notes.Add(TEXT("extra"));
	EXPECT_FALSE(Notes->Identical_InContainer(A, B));
}

TEST(ContainerProperties, SetsAndMapsOfStringsInDataDefinedStructs)
{
	UScriptStruct* Struct = NewObject<UScriptStruct>(CreatePackage(TEXT("/Script/ContainerTest")), TEXT("Registry"), RF_Public);
	FMapProperty* Map = new FMapProperty(Struct, TEXT("ByName"), FieldFlags);
	Map->AddCppProperty(new FStrProperty(Map, TEXT("ByName_Key"), FieldFlags));
	Map->AddCppProperty(new FStrProperty(Map, TEXT("ByName"), FieldFlags));
	Struct->AddCppProperty(Map);
	FSetProperty* Set = new FSetProperty(Struct, TEXT("Seen"), FieldFlags);
	Set->AddCppProperty(new FStrProperty(Set, TEXT("Seen"), FieldFlags));
	Struct->AddCppProperty(Set);
	Struct->StaticLink(true);
	EXPECT_EQ(Map->MapLayout.ValueOffset, (int32)sizeof(FString));

	TArray<uint8> Value;
	Value.SetNumZeroed(Struct->GetStructureSize());
	Struct->InitializeStruct(Value.GetData());
	{
		FScriptMapHelper MapHelper(Map, Map->ContainerPtrToValuePtr<void>(Value.GetData()));
		FScriptSetHelper SetHelper(Set, Set->ContainerPtrToValuePtr<void>(Value.GetData()));
		for (int32 Index = 0; Index < 200; ++Index)
		{
			const FString Key = LongText(Index);
			const FString Item = LongText(Index * 2);
			MapHelper.AddPair(&Key, &Item);
			SetHelper.AddElement(&Key);
			SetHelper.AddElement(&Key);
		}
		EXPECT_EQ(MapHelper.Num(), 200);
		EXPECT_EQ(SetHelper.Num(), 200);
		const FString Replaced = TEXT("replaced");
		const FString Key10 = LongText(10);
		MapHelper.AddPair(&Key10, &Replaced);
		EXPECT_EQ(MapHelper.Num(), 200);
		EXPECT_EQ(U8(*(const FString*)MapHelper.FindValueFromHash(&Key10)), "replaced");
		const FString Key5 = LongText(5);
		EXPECT_TRUE(MapHelper.RemovePair(&Key5));
		EXPECT_FALSE(MapHelper.RemovePair(&Key5));
		EXPECT_TRUE(SetHelper.RemoveElement(&Key5));
		// Remaining entries keep their order and contents.
		EXPECT_EQ(U8(*(const FString*)MapHelper.GetKeyPtr(5)), U8(LongText(6)));
		EXPECT_EQ(U8(*(const FString*)MapHelper.GetValuePtr(199 - 1)), U8(LongText(398)));
		EXPECT_EQ(U8(*(const FString*)SetHelper.GetElementPtr(198)), U8(LongText(199)));
		EXPECT_EQ(SetHelper.FindElementIndex(&Key10), 9);
	}

	// Copying the struct copies the containers element by element.
	TArray<uint8> Copy;
	Copy.SetNumZeroed(Struct->GetStructureSize());
	Struct->InitializeStruct(Copy.GetData());
	Struct->CopyScriptStruct(Copy.GetData(), Value.GetData());
	EXPECT_TRUE(Struct->CompareScriptStruct(Copy.GetData(), Value.GetData(), 0));
	Struct->DestroyStruct(Value.GetData());
	FScriptMapHelper CopyHelper(Map, Map->ContainerPtrToValuePtr<void>(Copy.GetData()));
	EXPECT_EQ(CopyHelper.Num(), 199);
	EXPECT_EQ(U8(*(const FString*)CopyHelper.GetValuePtr(0)), U8(LongText(0)));
	Struct->DestroyStruct(Copy.GetData());
}

TEST(ContainerProperties, ArraysOfStructsImportAndExportAsOneValue)
{
	UScriptStruct* Inner = NewObject<UScriptStruct>(CreatePackage(TEXT("/Script/ContainerTest")), TEXT("Pair"), RF_Public);
	FStrProperty* Label = new FStrProperty(Inner, TEXT("Label"), FieldFlags);
	Inner->AddCppProperty(Label);
	Inner->StaticLink(true);
	UScriptStruct* Outer = NewObject<UScriptStruct>(CreatePackage(TEXT("/Script/ContainerTest")), TEXT("PairList"), RF_Public);
	FArrayProperty* List = new FArrayProperty(Outer, TEXT("List"), FieldFlags);
	FStructProperty* Element = new FStructProperty(List, TEXT("List"), FieldFlags);
	Element->Struct = Inner;
	List->AddCppProperty(Element);
	Outer->AddCppProperty(List);
	Outer->StaticLink(true);

	TArray<uint8> Value;
	Value.SetNumZeroed(Outer->GetStructureSize());
	Outer->InitializeStruct(Value.GetData());
	const TCHAR* Text = TEXT("(List=((Label=\"first, with comma\"),(),(Label=\"third\")))");
	const TCHAR* Rest = Outer->ImportText(Text, Value.GetData(), nullptr, PPF_None, nullptr, TEXT("PairList"));
	ASSERT_NE(Rest, nullptr);
	EXPECT_EQ(*Rest, 0);
	FString Exported;
	Outer->ExportText(Exported, Value.GetData(), nullptr, nullptr, PPF_None, nullptr);
	EXPECT_EQ(U8(Exported), "(List=((Label=\"first, with comma\"),(),(Label=\"third\")))");
	Outer->DestroyStruct(Value.GetData());
}
