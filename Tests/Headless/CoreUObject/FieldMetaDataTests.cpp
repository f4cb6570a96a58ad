#include "ObjectTestTypes.h"

#include <gtest/gtest.h>

namespace
{
	/**
	 * UField and FField keep editor metadata by the same rules; every rule is checked on both kinds, so a
	 * field kind that stopped sharing them would fail here.
	 */
	template <typename FieldType>
	void ExpectMetaDataRules(FieldType& Field)
	{
		// Nothing is allocated until a value is set.
		EXPECT_EQ(Field.GetMetaDataMap(), nullptr);
		EXPECT_EQ(Field.FindMetaData(TEXT("Category")), nullptr);
		EXPECT_EQ(Field.GetMetaData(TEXT("Category")), TEXT(""));

		// A None key is refused, and looking a key up by text never adds it to the name table.
		Field.SetMetaData(NAME_None, TEXT("Ignored"));
		EXPECT_EQ(Field.GetMetaDataMap(), nullptr);
		EXPECT_FALSE(Field.HasMetaData(TEXT("MetaDataKeyNoOneEverNamed")));
		EXPECT_TRUE(FName(TEXT("MetaDataKeyNoOneEverNamed"), FNAME_Find).IsNone());

		struct FCase
		{
			const TCHAR* Key;
			const TCHAR* Value;
			bool bBool;
			int32 Int;
			float Float;
		};
		const FCase Cases[] = {
			{ TEXT("ClampMin"), TEXT("1.5"), false, 1, 1.5f },
			{ TEXT("ArraySizeEnum"), TEXT("42"), false, 42, 42.0f },
			{ TEXT("BlueprintProtected"), TEXT("True"), true, 0, 0.0f },
			{ TEXT("ExposeOnSpawn"), TEXT("false"), false, 0, 0.0f },
			{ TEXT("Category"), TEXT("Stats|Health"), false, 0, 0.0f },
		};
		for (const FCase& Case : Cases)
		{
			Field.SetMetaData(Case.Key, Case.Value);
		}
		for (int32 Index = 0; Index < (int32)UE_ARRAY_COUNT(Cases); ++Index)
		{
			const FCase& Case = Cases[Index];
			SCOPED_TRACE(testing::Message() << "case " << Index);
			ASSERT_NE(Field.FindMetaData(FName(Case.Key)), nullptr);
			EXPECT_EQ(*Field.FindMetaData(Case.Key), Case.Value);
			EXPECT_EQ(Field.GetMetaDataText(FName(Case.Key)).ToString(), Case.Value);
			EXPECT_EQ(Field.GetBoolMetaData(Case.Key), Case.bBool);
			EXPECT_EQ(Field.GetIntMetaData(FName(Case.Key)), Case.Int);
			EXPECT_FLOAT_EQ(Field.GetFloatMetaData(Case.Key), Case.Float);
		}

		// Setting a key again changes its value but keeps its place; removing one leaves the others in order.
		Field.SetMetaData(FName(TEXT("ClampMin")), FString(TEXT("0")));
		Field.RemoveMetaData(TEXT("BlueprintProtected"));
		Field.RemoveMetaData(TEXT("NeverSet"));
		ASSERT_NE(Field.GetMetaDataMap(), nullptr);
		TArray<FName> Keys;
		Field.GetMetaDataMap()->GenerateKeyArray(Keys);
		EXPECT_EQ(Keys, TArray<FName>({ FName(TEXT("ClampMin")), FName(TEXT("ArraySizeEnum")), FName(TEXT("ExposeOnSpawn")), FName(TEXT("Category")) }));
		EXPECT_EQ(Field.GetMetaData(FName(TEXT("ClampMin"))), TEXT("0"));
		EXPECT_FALSE(Field.HasMetaData(FName(TEXT("BlueprintProtected"))));

		// The short tooltip is preferred only when asked for, and an empty tooltip counts as none: the field's
		// readable name stands in (these fields have single-word names and no DisplayName).
		Field.SetMetaData(TEXT("ShortTooltip"), TEXT(""));
		Field.SetMetaData(TEXT("ToolTip"), TEXT(""));
		EXPECT_EQ(Field.GetToolTipText(true).ToString(), Field.GetName());
		Field.SetMetaData(TEXT("ToolTip"), TEXT("Long"));
		EXPECT_EQ(Field.GetToolTipText(true).ToString(), TEXT("Long"));
		Field.SetMetaData(TEXT("ShortTooltip"), TEXT("Short"));
		EXPECT_EQ(Field.GetToolTipText(true).ToString(), TEXT("Short"));
		EXPECT_EQ(Field.GetToolTipText(false).ToString(), TEXT("Long"));

		// Class metadata names a class by path; an empty or unknown name gives null.
		Field.SetMetaData(TEXT("AllowedClass"), TEXT("/Script/CoreUObject.Object"));
		EXPECT_EQ(Field.GetClassMetaData(TEXT("AllowedClass")), UObject::StaticClass());
		Field.SetMetaData(TEXT("AllowedClass"), TEXT("/Script/CoreUObject.NoSuchClass"));
		EXPECT_EQ(Field.GetClassMetaData(FName(TEXT("AllowedClass"))), nullptr);
		EXPECT_EQ(Field.GetClassMetaData(TEXT("Missing")), nullptr);
	}
}

TEST(FieldMetaDataTests, ObjectFieldsAndPropertiesShareTheRules)
{
	UPackage* Package = CreatePackage(TEXT("/Script/FieldMetaDataTest"));
	UFunction* Function = NewObject<UFunction>(Package, FName(TEXT("Describe")), RF_Public | RF_Transient);
	{
		SCOPED_TRACE("UField");
		ExpectMetaDataRules(*Function);
	}

	FIntProperty* Count = new FIntProperty(Function, TEXT("Count"), RF_Public | RF_Transient);
	Function->AddCppProperty(Count);
	{
		SCOPED_TRACE("FField");
		ExpectMetaDataRules(*Count);
	}
}
