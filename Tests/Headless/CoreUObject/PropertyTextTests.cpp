#include "ObjectTestTypes.h"

#include <gtest/gtest.h>

// Text forms of property values, checked against the engine's: each case sets a value, exports it
// (bare, and delimited as inside a struct or container), and imports the text back.

namespace
{
	constexpr EObjectFlags FieldFlags = RF_Public | RF_MarkAsNative | RF_Transient;

	/** A data-defined class holding one property per kind, added with the catalogue's calls. */
	struct FTextTable
	{
		UClass* Class = nullptr;
		UObject* Object = nullptr;
		UEnum* ScopedEnum = nullptr;
		UEnum* RegularEnum = nullptr;
		UScriptStruct* DataStruct = nullptr;
		UFunction* Signature = nullptr;

		FProperty* Find(const TCHAR* Name) const { return Class->FindPropertyByName(FName(Name)); }
		void* ValuePtr(const TCHAR* Name) const { return Find(Name)->ContainerPtrToValuePtr<void>(Object); }

		FString Export(const TCHAR* Name, int32 PortFlags = PPF_None) const
		{
			FString Result;
			Find(Name)->ExportTextItem_InContainer(Result, Object, nullptr, nullptr, PortFlags);
			return Result;
		}

		/** Imports Text; returns what follows the value, or "<failed>". */
		FString Import(const TCHAR* Name, const TCHAR* Text, int32 PortFlags = PPF_None) const
		{
			const TCHAR* Rest = Find(Name)->ImportText_InContainer(Text, Object, nullptr, PortFlags);
			return Rest ? FString(Rest) : FString(TEXT("<failed>"));
		}
	};

	template <typename T>
	T* Add(UStruct* Owner, const TCHAR* Name)
	{
		T* Property = new T(Owner, FName(Name), FieldFlags);
		Owner->AddCppProperty(Property);
		return Property;
	}

	const FTextTable& GetTable()
	{
		static FTextTable Table;
		if (Table.Class)
		{
			return Table;
		}
		UPackage* Script = CreatePackage(TEXT("/Script/TextTableTest"));
		Table.ScopedEnum = NewObject<UEnum>(Script, TEXT("ETestMove"), RF_Public);
		TArray<TPair<FName, int64>> ScopedNames;
		ScopedNames.Emplace(TEXT("ETestMove::Walking"), 0);
		ScopedNames.Emplace(TEXT("ETestMove::Flying"), 1);
		Table.ScopedEnum->SetEnums(ScopedNames, UEnum::ECppForm::EnumClass);
		Table.RegularEnum = NewObject<UEnum>(Script, TEXT("ETestChannel"), RF_Public);
		TArray<TPair<FName, int64>> RegularNames;
		RegularNames.Emplace(TEXT("TC_Static"), 0);
		RegularNames.Emplace(TEXT("TC_Pawn"), 1);
		Table.RegularEnum->SetEnums(RegularNames, UEnum::ECppForm::Regular);

		// A data-defined struct (not atomic): exports only members that differ from their defaults.
		Table.DataStruct = NewObject<UScriptStruct>(Script, TEXT("TestHit"), RF_Public);
		FIntProperty* HitCount = new FIntProperty(Table.DataStruct, TEXT("Count"), FieldFlags);
		Table.DataStruct->AddCppProperty(HitCount);
		FStrProperty* HitName = new FStrProperty(Table.DataStruct, TEXT("Name"), FieldFlags);
		Table.DataStruct->AddCppProperty(HitName);
		Table.DataStruct->StaticLink(true);

		Table.Signature = NewObject<UDelegateFunction>(Script, TEXT("OnTestSignal__DelegateSignature"), RF_Public);
		Table.Signature->FunctionFlags = FUNC_Delegate | FUNC_MulticastDelegate;
		Table.Signature->StaticLink(true);

		Table.Class = NewObject<UClass>(Script, TEXT("TextTable"), RF_Public);
		UClass* Class = Table.Class;
		Class->SetSuperStruct(UObject::StaticClass());
		// Reverse order of declaration; the order does not matter to these tests.
		Add<FIntProperty>(Class, TEXT("Int"));
		Add<FInt8Property>(Class, TEXT("Int8"));
		Add<FInt16Property>(Class, TEXT("Int16"));
		Add<FInt64Property>(Class, TEXT("Int64"));
		Add<FUInt16Property>(Class, TEXT("UInt16"));
		Add<FUInt32Property>(Class, TEXT("UInt32"));
		Add<FUInt64Property>(Class, TEXT("UInt64"));
		Add<FFloatProperty>(Class, TEXT("Float"));
		Add<FDoubleProperty>(Class, TEXT("Double"));
		Add<FBoolProperty>(Class, TEXT("Bool"));
		Add<FByteProperty>(Class, TEXT("Byte"));
		Add<FByteProperty>(Class, TEXT("ByteEnum"))->Enum = Table.RegularEnum;
		FEnumProperty* EnumProperty = new FEnumProperty(Class, TEXT("Enum"), FieldFlags, Table.ScopedEnum);
		EnumProperty->AddCppProperty(new FByteProperty(EnumProperty, TEXT("UnderlyingType"), FieldFlags));
		Class->AddCppProperty(EnumProperty);
		Add<FNameProperty>(Class, TEXT("Name"));
		Add<FStrProperty>(Class, TEXT("Str"));
		Add<FTextProperty>(Class, TEXT("Text"));
		Add<FObjectProperty>(Class, TEXT("Object"))->SetPropertyClass(UTestReflectedObject::StaticClass());
		Add<FWeakObjectProperty>(Class, TEXT("Weak"))->SetPropertyClass(UObject::StaticClass());
		Add<FSoftObjectProperty>(Class, TEXT("Soft"))->SetPropertyClass(UObject::StaticClass());
		FClassProperty* ClassProperty = Add<FClassProperty>(Class, TEXT("Class"));
		ClassProperty->SetPropertyClass(UClass::StaticClass());
		ClassProperty->SetMetaClass(UTestReflectedObject::StaticClass());
		FSoftClassProperty* SoftClass = Add<FSoftClassProperty>(Class, TEXT("SoftClass"));
		SoftClass->SetPropertyClass(UClass::StaticClass());
		SoftClass->SetMetaClass(UObject::StaticClass());
		Add<FInterfaceProperty>(Class, TEXT("Interface"))->SetInterfaceClass(UInterface::StaticClass());
		Add<FStructProperty>(Class, TEXT("Vector"))->Struct = TBaseStructure<FVector>::Get();
		Add<FStructProperty>(Class, TEXT("Rotator"))->Struct = TBaseStructure<FRotator>::Get();
		Add<FStructProperty>(Class, TEXT("Transform"))->Struct = TBaseStructure<FTransform>::Get();
		Add<FStructProperty>(Class, TEXT("Color"))->Struct = TBaseStructure<FColor>::Get();
		Add<FStructProperty>(Class, TEXT("LinearColor"))->Struct = TBaseStructure<FLinearColor>::Get();
		Add<FStructProperty>(Class, TEXT("Guid"))->Struct = TBaseStructure<FGuid>::Get();
		Add<FStructProperty>(Class, TEXT("Hit"))->Struct = Table.DataStruct;
		Add<FStructProperty>(Class, TEXT("SoftPath"))->Struct = FSoftObjectPath::StaticStruct();
		FArrayProperty* Strings = Add<FArrayProperty>(Class, TEXT("Strings"));
		Strings->AddCppProperty(new FStrProperty(Strings, TEXT("Strings"), FieldFlags));
		FArrayProperty* Vectors = Add<FArrayProperty>(Class, TEXT("Vectors"));
		FStructProperty* VectorInner = new FStructProperty(Vectors, TEXT("Vectors"), FieldFlags);
		VectorInner->Struct = TBaseStructure<FVector>::Get();
		Vectors->AddCppProperty(VectorInner);
		FSetProperty* Names = Add<FSetProperty>(Class, TEXT("Names"));
		Names->AddCppProperty(new FNameProperty(Names, TEXT("Names"), FieldFlags));
		FMapProperty* Scores = Add<FMapProperty>(Class, TEXT("Scores"));
		Scores->AddCppProperty(new FStrProperty(Scores, TEXT("Scores_Key"), FieldFlags));
		Scores->AddCppProperty(new FIntProperty(Scores, TEXT("Scores"), FieldFlags));
		Add<FDelegateProperty>(Class, TEXT("Delegate"))->SignatureFunction = Table.Signature;
		Add<FMulticastInlineDelegateProperty>(Class, TEXT("Multicast"))->SignatureFunction = Table.Signature;
		Class->Bind();
		Class->StaticLink(true);
		Table.Object = NewObject<UObject>(CreatePackage(TEXT("/Game/TextTable/Values")), Class, TEXT("Values"));
		return Table;
	}

	struct FTextCase
	{
		const TCHAR* Property;
		/** Imported first, to set the value. */
		const TCHAR* Input;
		const char* Bare;
		const char* Delimited;
	};
}

TEST(PropertyText, EveryKindExportsAsTheEngineWritesIt)
{
	const FTextTable& Table = GetTable();
	UTestReflectedObject* Target = NewObject<UTestReflectedObject>(CreatePackage(TEXT("/Game/TextTable/Targets")), TEXT("Targets"), RF_Public);
	ASSERT_NE(Target, nullptr);

	const FTextCase Cases[] = {
		{ TEXT("Int"), TEXT("-12"), "-12", "-12" },
		{ TEXT("Int8"), TEXT("-128"), "-128", "-128" },
		{ TEXT("Int16"), TEXT("300"), "300", "300" },
		{ TEXT("Int64"), TEXT("-9000000000"), "-9000000000", "-9000000000" },
		{ TEXT("UInt16"), TEXT("65535"), "65535", "65535" },
		{ TEXT("UInt32"), TEXT("4000000000"), "4000000000", "4000000000" },
		{ TEXT("UInt64"), TEXT("18000000000000000000"), "18000000000000000000", "18000000000000000000" },
		{ TEXT("Float"), TEXT("1.5"), "1.500000", "1.500000" },
		{ TEXT("Double"), TEXT("-0.125"), "-0.125000", "-0.125000" },
		{ TEXT("Bool"), TEXT("true"), "True", "True" },
		{ TEXT("Byte"), TEXT("200"), "200", "200" },
		{ TEXT("ByteEnum"), TEXT("TC_Pawn"), "TC_Pawn", "TC_Pawn" },
		{ TEXT("Enum"), TEXT("Flying"), "Flying", "Flying" },
		{ TEXT("Name"), TEXT("Node_7"), "Node_7", "\"Node_7\"" },
		{ TEXT("Str"), TEXT("Say \"hi\""), "Say \"hi\"", "\"Say \\\"hi\\\"\"" },
		{ TEXT("Text"), TEXT("NSLOCTEXT(\"K2Node\", \"Target\", \"Target\")"), "NSLOCTEXT(\"K2Node\", \"Target\", \"Target\")", "NSLOCTEXT(\"K2Node\", \"Target\", \"Target\")" },
		{ TEXT("Object"), TEXT("/Game/TextTable/Targets.Targets"), "/Script/CoreUObjectTests.TestReflectedObject'/Game/TextTable/Targets.Targets'",
			"\"/Script/CoreUObjectTests.TestReflectedObject'/Game/TextTable/Targets.Targets'\"" },
		{ TEXT("Weak"), TEXT("/Game/TextTable/Targets.Targets"), "/Script/CoreUObjectTests.TestReflectedObject'/Game/TextTable/Targets.Targets'",
			"\"/Script/CoreUObjectTests.TestReflectedObject'/Game/TextTable/Targets.Targets'\"" },
		{ TEXT("Soft"), TEXT("/Game/Missing/Asset.Asset"), "/Game/Missing/Asset.Asset", "\"/Game/Missing/Asset.Asset\"" },
		{ TEXT("Class"), TEXT("/Script/CoreUObjectTests.TestReflectedChild"), "/Script/CoreUObject.Class'/Script/CoreUObjectTests.TestReflectedChild'",
			"\"/Script/CoreUObject.Class'/Script/CoreUObjectTests.TestReflectedChild'\"" },
		{ TEXT("SoftClass"), TEXT("/Script/CoreUObjectTests.TestReflectedChild"), "/Script/CoreUObjectTests.TestReflectedChild", "\"/Script/CoreUObjectTests.TestReflectedChild\"" },
		{ TEXT("Interface"), TEXT("None"), "None", "None" },
		{ TEXT("Vector"), TEXT("(X=1,Y=2.5,Z=-3)"), "(X=1.000000,Y=2.500000,Z=-3.000000)", "(X=1.000000,Y=2.500000,Z=-3.000000)" },
		{ TEXT("Rotator"), TEXT("(Pitch=10,Yaw=20,Roll=30)"), "(Pitch=10.000000,Yaw=20.000000,Roll=30.000000)", "(Pitch=10.000000,Yaw=20.000000,Roll=30.000000)" },
		{ TEXT("Transform"), TEXT("(Translation=(X=1,Y=2,Z=3))"),
			"(Rotation=(X=0.000000,Y=0.000000,Z=0.000000,W=1.000000),Translation=(X=1.000000,Y=2.000000,Z=3.000000),Scale3D=(X=1.000000,Y=1.000000,Z=1.000000))",
			"(Rotation=(X=0.000000,Y=0.000000,Z=0.000000,W=1.000000),Translation=(X=1.000000,Y=2.000000,Z=3.000000),Scale3D=(X=1.000000,Y=1.000000,Z=1.000000))" },
		{ TEXT("Color"), TEXT("(R=255,G=128,B=0,A=255)"), "(B=0,G=128,R=255,A=255)", "(B=0,G=128,R=255,A=255)" },
		{ TEXT("LinearColor"), TEXT("(R=1,G=0.5,B=0.25,A=1)"), "(R=1.000000,G=0.500000,B=0.250000,A=1.000000)", "(R=1.000000,G=0.500000,B=0.250000,A=1.000000)" },
		{ TEXT("Guid"), TEXT("8CDD81286D894EBA8414B5DEBA780D9E"), "8CDD81286D894EBA8414B5DEBA780D9E", "8CDD81286D894EBA8414B5DEBA780D9E" },
		{ TEXT("Hit"), TEXT("(Count=3)"), "(Count=3)", "(Count=3)" },
		{ TEXT("SoftPath"), TEXT("/Game/A/B.B:Sub"), "/Game/A/B.B:Sub", "\"/Game/A/B.B:Sub\"" },
		{ TEXT("Strings"), TEXT("(\"a\", \"b,c\")"), "(\"a\",\"b,c\")", "(\"a\",\"b,c\")" },
		{ TEXT("Vectors"), TEXT("((X=1,Y=0,Z=0),(X=0,Y=0,Z=0))"), "((X=1.000000,Y=0.000000,Z=0.000000),(X=0.000000,Y=0.000000,Z=0.000000))",
			"((X=1.000000,Y=0.000000,Z=0.000000),(X=0.000000,Y=0.000000,Z=0.000000))" },
		{ TEXT("Names"), TEXT("(A, B, A)"), "(\"A\",\"B\")", "(\"A\",\"B\")" },
		{ TEXT("Scores"), TEXT("((\"one\", 1), (\"two\", 2))"), "((\"one\", 1),(\"two\", 2))", "((\"one\", 1),(\"two\", 2))" },
		{ TEXT("Delegate"), TEXT("(null).None"), "(null).None", "(null).None" },
		{ TEXT("Multicast"), TEXT("()"), "()", "()" },
	};
	for (const FTextCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Property));
		ASSERT_NE(Table.Find(Case.Property), nullptr);
		EXPECT_EQ(U8(Table.Import(Case.Property, Case.Input)), "");
		EXPECT_EQ(U8(Table.Export(Case.Property)), Case.Bare);
		EXPECT_EQ(U8(Table.Export(Case.Property, PPF_Delimited)), Case.Delimited);
		// What was exported imports back to the same value.
		FString Exported = Table.Export(Case.Property, PPF_Delimited);
		Table.Find(Case.Property)->ClearValue_InContainer(Table.Object);
		EXPECT_EQ(U8(Table.Import(Case.Property, *Exported, PPF_Delimited)), "");
		EXPECT_EQ(U8(Table.Export(Case.Property, PPF_Delimited)), U8(Exported));
	}
}

TEST(PropertyText, InitialValuesExportAsTheEngineDoes)
{
	const FTextTable& Table = GetTable();
	UObject* Fresh = NewObject<UObject>(CreatePackage(TEXT("/Game/TextTable/Fresh")), Table.Class, TEXT("Fresh"));
	auto ExportFresh = [&](const TCHAR* Name, int32 PortFlags) {
		FString Result;
		Table.Find(Name)->ExportTextItem_InContainer(Result, Fresh, nullptr, nullptr, PortFlags);
		return U8(Result);
	};
	EXPECT_EQ(ExportFresh(TEXT("Bool"), PPF_None), "False");
	EXPECT_EQ(ExportFresh(TEXT("Float"), PPF_None), "0.000000");
	EXPECT_EQ(ExportFresh(TEXT("Name"), PPF_None), "None");
	EXPECT_EQ(ExportFresh(TEXT("Name"), PPF_Delimited), "\"\"");
	EXPECT_EQ(ExportFresh(TEXT("Str"), PPF_Delimited), "\"\"");
	EXPECT_EQ(ExportFresh(TEXT("Object"), PPF_Delimited), "None");
	EXPECT_EQ(ExportFresh(TEXT("Soft"), PPF_None), "");
	EXPECT_EQ(ExportFresh(TEXT("Strings"), PPF_None), "");
	EXPECT_EQ(ExportFresh(TEXT("Names"), PPF_None), "()");
	EXPECT_EQ(ExportFresh(TEXT("Scores"), PPF_None), "()");
	EXPECT_EQ(ExportFresh(TEXT("Hit"), PPF_None), "()");
	EXPECT_EQ(ExportFresh(TEXT("Vector"), PPF_None), "(X=0.000000,Y=0.000000,Z=0.000000)");
	EXPECT_EQ(ExportFresh(TEXT("Guid"), PPF_None), "00000000000000000000000000000000");
	EXPECT_EQ(ExportFresh(TEXT("Text"), PPF_Delimited), "\"\"");
	EXPECT_EQ(ExportFresh(TEXT("Enum"), PPF_None), "Walking");

	// ExportText_Direct writes only values that differ from the delta (a null delta is the initial value).
	FString Out;
	FProperty* Int = Table.Find(TEXT("Int"));
	EXPECT_FALSE(Int->ExportText_InContainer(0, Out, Fresh, nullptr, nullptr, PPF_None));
	EXPECT_EQ(U8(Out), "");
	EXPECT_TRUE(Int->ExportText_InContainer(0, Out, Fresh, Fresh, nullptr, PPF_None));
	EXPECT_EQ(U8(Out), "0");
}

TEST(PropertyText, TextsKeepTheirIdentity)
{
	const FTextTable& Table = GetTable();
	EXPECT_EQ(U8(Table.Import(TEXT("Text"), TEXT("INVTEXT(\"Fixed\")"))), "");
	EXPECT_EQ(U8(Table.Export(TEXT("Text"))), "INVTEXT(\"Fixed\")");
	const FText& Value = *(const FText*)Table.ValuePtr(TEXT("Text"));
	EXPECT_TRUE(Value.IsCultureInvariant());
	// A text made from a string is not culture invariant in the editor (FText::FromString), so it writes as the
	// plain string, quoted when delimited; made with FText::AsCultureInvariant it writes as INVTEXT.
	EXPECT_EQ(U8(Table.Import(TEXT("Text"), TEXT("Plain words"))), "");
	EXPECT_FALSE((*(const FText*)Table.ValuePtr(TEXT("Text"))).IsCultureInvariant());
	EXPECT_EQ(U8(Table.Export(TEXT("Text"))), "Plain words");
	EXPECT_EQ(U8(Table.Export(TEXT("Text"), PPF_Delimited)), "\"Plain words\"");
	*(FText*)Table.ValuePtr(TEXT("Text")) = FText::FromString(TEXT("From a string"));
	EXPECT_EQ(U8(Table.Export(TEXT("Text"))), "From a string");
	*(FText*)Table.ValuePtr(TEXT("Text")) = FText::AsCultureInvariant(TEXT("Invariant"));
	EXPECT_EQ(U8(Table.Export(TEXT("Text"))), "INVTEXT(\"Invariant\")");
	EXPECT_EQ(U8(Table.Import(TEXT("Text"), TEXT("\"Quoted \\\"words\\\"\""), PPF_Delimited)), "");
	EXPECT_EQ(U8((*(const FText*)Table.ValuePtr(TEXT("Text"))).ToString()), "Quoted \"words\"");
	EXPECT_EQ(U8(Table.Import(TEXT("Text"), TEXT("NSLOCTEXT(\"Ns\", \"Key\")"))), "<failed>");
}

TEST(PropertyText, BadTextIsRefused)
{
	const FTextTable& Table = GetTable();
	struct FBadCase
	{
		const TCHAR* Property;
		const TCHAR* Input;
		int32 PortFlags;
	};
	const FBadCase Cases[] = {
		{ TEXT("Int"), TEXT("abc"), PPF_None },
		{ TEXT("Int"), TEXT("-"), PPF_None },
		{ TEXT("Float"), TEXT("x1"), PPF_None },
		{ TEXT("Bool"), TEXT("maybe"), PPF_None },
		{ TEXT("ByteEnum"), TEXT("TC_Nothing"), PPF_None },
		{ TEXT("Enum"), TEXT("Swimming"), PPF_None },
		{ TEXT("Str"), TEXT("unquoted"), PPF_Delimited },
		{ TEXT("Str"), TEXT("\"unterminated"), PPF_Delimited },
		{ TEXT("Object"), TEXT("/Game/Nowhere/Missing.Missing"), PPF_None },
		{ TEXT("Class"), TEXT("/Script/CoreUObject.Object"), PPF_None },
		{ TEXT("Vector"), TEXT("X=1"), PPF_None },
		{ TEXT("Vector"), TEXT("(X=1,Y=2"), PPF_None },
		{ TEXT("Strings"), TEXT("(\"a\" \"b\")"), PPF_None },
		{ TEXT("Scores"), TEXT("((\"one\" 1))"), PPF_None },
		{ TEXT("Scores"), TEXT("((\"one\", x))"), PPF_None },
		{ TEXT("Names"), TEXT("A,B"), PPF_None },
		{ TEXT("Delegate"), TEXT("NoDot"), PPF_None },
		{ TEXT("SoftPath"), TEXT("NotAPath"), PPF_None },
	};
	for (const FBadCase& Case : Cases)
	{
		SCOPED_TRACE(U8(FString(Case.Property) + TEXT(" <- ") + Case.Input));
		EXPECT_EQ(U8(Table.Import(Case.Property, Case.Input, Case.PortFlags)), "<failed>");
	}
	// A failed map import leaves no partial map behind.
	ASSERT_EQ(U8(Table.Import(TEXT("Scores"), TEXT("((\"kept\", 1))"))), "");
	EXPECT_EQ(U8(Table.Import(TEXT("Scores"), TEXT("((\"first\", 1),(\"second\", oops))"))), "<failed>");
	EXPECT_EQ(U8(Table.Export(TEXT("Scores"))), "()");
}

TEST(PropertyText, NumbersAcceptTheEngineForms)
{
	const FTextTable& Table = GetTable();
	EXPECT_EQ(U8(Table.Import(TEXT("Int"), TEXT("0x1F"))), "");
	EXPECT_EQ(U8(Table.Export(TEXT("Int"))), "31");
	EXPECT_EQ(U8(Table.Import(TEXT("Int"), TEXT("TC_Pawn"))), "");
	EXPECT_EQ(U8(Table.Export(TEXT("Int"))), "1");
	EXPECT_EQ(U8(Table.Import(TEXT("Float"), TEXT("2.5f,rest"))), ",rest");
	EXPECT_EQ(U8(Table.Export(TEXT("Float"))), "2.500000");
	EXPECT_EQ(U8(Table.Import(TEXT("Double"), TEXT("1e3"))), "");
	EXPECT_EQ(U8(Table.Export(TEXT("Double"))), "1000.000000");
	EXPECT_EQ(U8(Table.Import(TEXT("Bool"), TEXT("yes"))), "");
	EXPECT_EQ(U8(Table.Export(TEXT("Bool"))), "True");
	EXPECT_EQ(U8(Table.Import(TEXT("Bool"), TEXT("0"))), "");
	EXPECT_EQ(U8(Table.Export(TEXT("Bool"))), "False");
	EXPECT_EQ(U8(Table.Import(TEXT("Byte"), TEXT("True"))), "");
	EXPECT_EQ(U8(Table.Export(TEXT("Byte"))), "1");
	EXPECT_EQ(U8(Table.Import(TEXT("ByteEnum"), TEXT("1"))), "");
	EXPECT_EQ(U8(Table.Export(TEXT("ByteEnum"))), "TC_Pawn");
	// The generated _MAX entry is not a value to show.
	*(uint8*)Table.ValuePtr(TEXT("ByteEnum")) = 2;
	EXPECT_EQ(U8(Table.Export(TEXT("ByteEnum"))), "(INVALID)");
	EXPECT_EQ(U8(Table.Export(TEXT("ByteEnum"), PPF_Copy)), "TC_MAX");
}

TEST(PropertyText, NativeStructMembersAndDataStructs)
{
	const FTextTable& Table = GetTable();
	// Unknown members are reported and skipped, as the engine does; the rest still imports.
	EXPECT_EQ(U8(Table.Import(TEXT("Hit"), TEXT("(Bogus=(1,2),Name=\"ok\", Count=9)"))), "");
	// AddCppProperty prepended Name before Count, as the engine does.
	EXPECT_EQ(U8(Table.Export(TEXT("Hit"))), "(Name=\"ok\",Count=9)");
	// A struct export leaves out members equal to the defaults given; the value itself as default writes all.
	FProperty* Hit = Table.Find(TEXT("Hit"));
	void* Value = Table.ValuePtr(TEXT("Hit"));
	FString WithItself;
	Hit->ExportTextItem_Direct(WithItself, Value, Value, nullptr, PPF_None);
	EXPECT_EQ(U8(WithItself), "(Name=\"ok\",Count=9)");
	TArray<uint8> Defaults;
	Defaults.SetNumZeroed(Table.DataStruct->GetStructureSize());
	Table.DataStruct->InitializeStruct(Defaults.GetData());
	Table.DataStruct->CopyScriptStruct(Defaults.GetData(), Value);
	*(int32*)Table.DataStruct->FindPropertyByName(TEXT("Count"))->ContainerPtrToValuePtr<void>(Defaults.GetData()) = 1;
	FString WithDefaults;
	Hit->ExportTextItem_Direct(WithDefaults, Value, Defaults.GetData(), nullptr, PPF_None);
	EXPECT_EQ(U8(WithDefaults), "(Count=9)");
	Table.DataStruct->DestroyStruct(Defaults.GetData());
	// Whole structs compare by value.
	FStructProperty* Vector = CastField<FStructProperty>(Table.Find(TEXT("Vector")));
	FVector A(1, 2, 3);
	FVector B(1, 2, 3);
	EXPECT_TRUE(Vector->Identical(&A, &B));
	B.Z = 4;
	EXPECT_FALSE(Vector->Identical(&A, &B));
}
