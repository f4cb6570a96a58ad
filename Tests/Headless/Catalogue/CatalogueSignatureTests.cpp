#include "CatalogueTestUtils.h"

#include <utility>

using namespace CatalogueTest;

// Signatures of well-known engine functions, as the engine's header tool builds them: parameter
// names and order, property classes, CPF_ flags, FUNC_ flags and metadata (including the
// CPP_Default_ values the editor reads pin defaults from).
namespace
{
	struct FExpectedParam
	{
		const char* Name;
		const TCHAR* FieldClass;
		EPropertyFlags Required;
		EPropertyFlags Forbidden;
		/** Class (meta class for class references), struct or enum named by the property; empty when none. */
		const TCHAR* TypePath;
	};

	struct FSignatureCase
	{
		const TCHAR* ClassPath;
		const TCHAR* FunctionName;
		EFunctionFlags Required;
		EFunctionFlags Forbidden;
		std::vector<FExpectedParam> Params;
		std::vector<std::pair<const TCHAR*, const char*>> Meta;
	};

	FString TypePathOf(const FProperty* Property)
	{
		if (const FClassProperty* ClassProperty = CastField<FClassProperty>(Property))
		{
			return ClassProperty->MetaClass ? ClassProperty->MetaClass->GetPathName() : FString();
		}
		if (const FObjectPropertyBase* Object = CastField<FObjectPropertyBase>(Property))
		{
			return Object->PropertyClass ? Object->PropertyClass->GetPathName() : FString();
		}
		if (const FStructProperty* Struct = CastField<FStructProperty>(Property))
		{
			return Struct->Struct ? Struct->Struct->GetPathName() : FString();
		}
		if (const FByteProperty* Byte = CastField<FByteProperty>(Property))
		{
			return Byte->Enum ? Byte->Enum->GetPathName() : FString();
		}
		if (const FEnumProperty* Enum = CastField<FEnumProperty>(Property))
		{
			return Enum->GetEnum() ? Enum->GetEnum()->GetPathName() : FString();
		}
		if (const FArrayProperty* Array = CastField<FArrayProperty>(Property))
		{
			return Array->Inner ? TypePathOf(Array->Inner) : FString();
		}
		return FString();
	}

	const EPropertyFlags In = CPF_Parm;
	const EPropertyFlags Outputs = CPF_OutParm | CPF_ReturnParm;

	std::vector<FSignatureCase> Cases()
	{
		return {
			{ TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"),
				FUNC_Final | FUNC_Native | FUNC_Static | FUNC_Public | FUNC_BlueprintCallable | FUNC_HasDefaults,
				FUNC_BlueprintPure | FUNC_Const | FUNC_Event | FUNC_HasOutParms,
				{
					{ "WorldContextObject", TEXT("ObjectProperty"), In | CPF_ConstParm, Outputs | CPF_AdvancedDisplay, TEXT("/Script/CoreUObject.Object") },
					// 'const FString&' is a plain input: no ConstParm, no OutParm.
					{ "InString", TEXT("StrProperty"), In, Outputs | CPF_ConstParm | CPF_ReferenceParm | CPF_AdvancedDisplay, TEXT("") },
					{ "bPrintToScreen", TEXT("BoolProperty"), In | CPF_AdvancedDisplay, Outputs, TEXT("") },
					{ "bPrintToLog", TEXT("BoolProperty"), In | CPF_AdvancedDisplay, Outputs, TEXT("") },
					{ "TextColor", TEXT("StructProperty"), In | CPF_AdvancedDisplay, Outputs, TEXT("/Script/CoreUObject.LinearColor") },
					{ "Duration", TEXT("FloatProperty"), In | CPF_AdvancedDisplay, Outputs, TEXT("") },
					{ "Key", TEXT("NameProperty"), In | CPF_ConstParm | CPF_AdvancedDisplay, Outputs, TEXT("") },
				},
				{
					{ TEXT("WorldContext"), "WorldContextObject" }, { TEXT("CallableWithoutWorldContext"), "" },
					{ TEXT("Keywords"), "log print" }, { TEXT("AdvancedDisplay"), "2" }, { TEXT("DevelopmentOnly"), "" },
					{ TEXT("Category"), "Development" }, { TEXT("CPP_Default_InString"), "Hello" },
					{ TEXT("CPP_Default_bPrintToScreen"), "true" }, { TEXT("CPP_Default_bPrintToLog"), "true" },
					{ TEXT("CPP_Default_TextColor"), "(R=0.000000,G=0.660000,B=1.000000,A=1.000000)" },
					{ TEXT("CPP_Default_Duration"), "2.000000" }, { TEXT("CPP_Default_Key"), "None" },
					{ TEXT("CPP_Default_WorldContextObject"), "<absent>" }, { TEXT("ToolTip"), "<absent>" },
				} },
			{ TEXT("/Script/Engine.Actor"), TEXT("K2_GetActorLocation"),
				FUNC_Final | FUNC_Native | FUNC_Public | FUNC_BlueprintCallable | FUNC_BlueprintPure | FUNC_Const | FUNC_HasDefaults,
				FUNC_Static | FUNC_HasOutParms | FUNC_Event,
				{
					{ "ReturnValue", TEXT("StructProperty"), In | CPF_OutParm | CPF_ReturnParm, CPF_ConstParm, TEXT("/Script/CoreUObject.Vector") },
				},
				{
					{ TEXT("DisplayName"), "Get Actor Location" }, { TEXT("Category"), "Transformation" },
					{ TEXT("Keywords"), "position" }, { TEXT("ScriptName"), "GetActorLocation" },
				} },
			{ TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Add_DoubleDouble"),
				FUNC_Final | FUNC_Native | FUNC_Static | FUNC_Public | FUNC_BlueprintCallable | FUNC_BlueprintPure,
				FUNC_HasOutParms | FUNC_Const | FUNC_HasDefaults,
				{
					{ "A", TEXT("DoubleProperty"), In, Outputs, TEXT("") },
					{ "B", TEXT("DoubleProperty"), In, Outputs, TEXT("") },
					{ "ReturnValue", TEXT("DoubleProperty"), In | CPF_OutParm | CPF_ReturnParm, CPF_None, TEXT("") },
				},
				{
					{ TEXT("CompactNodeTitle"), "+" }, { TEXT("DisplayName"), "float + float" },
					{ TEXT("Keywords"), "+ add plus" }, { TEXT("CommutativeAssociativeBinaryOperator"), "true" },
					{ TEXT("Category"), "Math|Float" }, { TEXT("CPP_Default_B"), "1.000000" },
				} },
			{ TEXT("/Script/Engine.Actor"), TEXT("K2_SetActorLocation"),
				FUNC_Final | FUNC_Native | FUNC_Public | FUNC_BlueprintCallable | FUNC_HasOutParms | FUNC_HasDefaults,
				FUNC_BlueprintPure | FUNC_Static | FUNC_Const,
				{
					{ "NewLocation", TEXT("StructProperty"), In, Outputs, TEXT("/Script/CoreUObject.Vector") },
					{ "bSweep", TEXT("BoolProperty"), In, Outputs, TEXT("") },
					// A non-const reference is an output pin.
					{ "SweepHitResult", TEXT("StructProperty"), In | CPF_OutParm, CPF_ReferenceParm | CPF_ReturnParm, TEXT("/Script/Engine.HitResult") },
					{ "bTeleport", TEXT("BoolProperty"), In, Outputs, TEXT("") },
					{ "ReturnValue", TEXT("BoolProperty"), In | CPF_OutParm | CPF_ReturnParm, CPF_None, TEXT("") },
				},
				{ { TEXT("DisplayName"), "Set Actor Location" }, { TEXT("Category"), "Transformation" } } },
			{ TEXT("/Script/Engine.GameplayStatics"), TEXT("GetAllActorsOfClass"),
				FUNC_Final | FUNC_Native | FUNC_Static | FUNC_Public | FUNC_BlueprintCallable | FUNC_HasOutParms,
				FUNC_BlueprintPure,
				{
					{ "WorldContextObject", TEXT("ObjectProperty"), In | CPF_ConstParm, Outputs, TEXT("/Script/CoreUObject.Object") },
					{ "ActorClass", TEXT("ClassProperty"), In | CPF_UObjectWrapper, Outputs, TEXT("/Script/Engine.Actor") },
					{ "OutActors", TEXT("ArrayProperty"), In | CPF_OutParm, CPF_ReturnParm | CPF_ReferenceParm, TEXT("/Script/Engine.Actor") },
				},
				{
					{ TEXT("DeterminesOutputType"), "ActorClass" }, { TEXT("DynamicOutputParam"), "OutActors" },
					{ TEXT("WorldContext"), "WorldContextObject" }, { TEXT("Category"), "Actor" },
				} },
			{ TEXT("/Script/Engine.KismetArrayLibrary"), TEXT("Array_Add"),
				FUNC_Final | FUNC_Native | FUNC_Static | FUNC_Public | FUNC_BlueprintCallable | FUNC_HasOutParms,
				FUNC_BlueprintPure,
				{
					// UPARAM(ref) TArray<int32>&: passed by reference as an input.
					{ "TargetArray", TEXT("ArrayProperty"), In | CPF_OutParm | CPF_ReferenceParm, CPF_ConstParm | CPF_ReturnParm, TEXT("") },
					// const int32&: a const reference input.
					{ "NewItem", TEXT("IntProperty"), In | CPF_ConstParm | CPF_OutParm | CPF_ReferenceParm, CPF_ReturnParm, TEXT("") },
					{ "ReturnValue", TEXT("IntProperty"), In | CPF_OutParm | CPF_ReturnParm, CPF_None, TEXT("") },
				},
				{
					{ TEXT("ArrayParm"), "TargetArray" }, { TEXT("ArrayTypeDependentParams"), "NewItem" },
					{ TEXT("CompactNodeTitle"), "ADD" }, { TEXT("CustomThunk"), "true" }, { TEXT("DisplayName"), "Add" },
				} },
			{ TEXT("/Script/Engine.Actor"), TEXT("ReceiveBeginPlay"),
				FUNC_Event | FUNC_BlueprintEvent | FUNC_Public,
				FUNC_Native | FUNC_Final | FUNC_BlueprintCallable,
				{},
				{ { TEXT("DisplayName"), "BeginPlay" } } },
			{ TEXT("/Script/Engine.Pawn"), TEXT("GetController"),
				FUNC_Final | FUNC_Native | FUNC_Public | FUNC_BlueprintCallable | FUNC_BlueprintPure | FUNC_Const,
				FUNC_Static,
				{ { "ReturnValue", TEXT("ObjectProperty"), In | CPF_OutParm | CPF_ReturnParm, CPF_None, TEXT("/Script/Engine.Controller") } },
				{ { TEXT("Category"), "Pawn" } } },
			{ TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("Delay"),
				FUNC_Final | FUNC_Native | FUNC_Static | FUNC_Public | FUNC_BlueprintCallable,
				FUNC_BlueprintPure | FUNC_HasOutParms,
				{
					{ "WorldContextObject", TEXT("ObjectProperty"), In | CPF_ConstParm, Outputs, TEXT("/Script/CoreUObject.Object") },
					{ "Duration", TEXT("FloatProperty"), In, Outputs, TEXT("") },
					{ "LatentInfo", TEXT("StructProperty"), In, Outputs, TEXT("/Script/Engine.LatentActionInfo") },
				},
				{ { TEXT("Latent"), "" }, { TEXT("LatentInfo"), "LatentInfo" }, { TEXT("WorldContext"), "WorldContextObject" } } },
		};
	}
}

TEST(CatalogueSignatures, WellKnownFunctionsMatchTheEngine)
{
	for (const FSignatureCase& Case : Cases())
	{
		SCOPED_TRACE(U8(FString(Case.ClassPath) + TEXT(".") + Case.FunctionName));
		const UFunction* Function = FindFunction(Case.ClassPath, Case.FunctionName);
		ASSERT_NE(Function, nullptr);
		EXPECT_EQ(Function->FunctionFlags & Case.Required, Case.Required) << "flags " << std::hex << (uint32)Function->FunctionFlags;
		EXPECT_EQ(Function->FunctionFlags & Case.Forbidden, FUNC_None) << "flags " << std::hex << (uint32)Function->FunctionFlags;

		const std::vector<FProperty*> Params = ParametersOf(Function);
		std::vector<std::string> ExpectedNames;
		for (const FExpectedParam& Param : Case.Params)
		{
			ExpectedNames.push_back(Param.Name);
		}
		ASSERT_EQ(NamesOf(Params), ExpectedNames);
		for (size_t Index = 0; Index < Params.size(); ++Index)
		{
			const FExpectedParam& Expected = Case.Params[Index];
			const FProperty* Param = Params[Index];
			SCOPED_TRACE(Expected.Name);
			EXPECT_EQ(U8(Param->GetClass()->GetName()), U8(Expected.FieldClass));
			EXPECT_EQ(Param->GetPropertyFlags() & Expected.Required, Expected.Required) << std::hex << (uint64)Param->GetPropertyFlags();
			EXPECT_EQ(Param->GetPropertyFlags() & Expected.Forbidden, CPF_None) << std::hex << (uint64)Param->GetPropertyFlags();
			EXPECT_EQ(U8(TypePathOf(Param)), U8(Expected.TypePath));
		}
		for (const auto& [Key, Value] : Case.Meta)
		{
			EXPECT_EQ(MetaOf(Function, Key), Value) << U8(Key);
		}
	}
}

TEST(CatalogueSignatures, ReturnValueAndParameterBlock)
{
	const UFunction* GetLocation = FindFunction(TEXT("/Script/Engine.Actor"), TEXT("K2_GetActorLocation"));
	ASSERT_NE(GetLocation, nullptr);
	const FProperty* Return = GetLocation->GetReturnProperty();
	ASSERT_NE(Return, nullptr);
	EXPECT_EQ(U8(Return->GetName()), "ReturnValue");
	EXPECT_EQ(GetLocation->NumParms, 1);
	EXPECT_GE(GetLocation->ParmsSize, (int32)sizeof(FVector));

	const UFunction* PrintString = FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
	ASSERT_NE(PrintString, nullptr);
	EXPECT_EQ(PrintString->GetReturnProperty(), nullptr);
	EXPECT_EQ(PrintString->NumParms, 7);
	// Parameters sit in declaration order in the parameter block, each at its own aligned offset.
	int32 PreviousOffset = -1;
	for (const FProperty* Param : ParametersOf(PrintString))
	{
		EXPECT_GT(Param->GetOffset_ForInternal(), PreviousOffset) << U8(Param->GetName());
		EXPECT_EQ(Param->GetOffset_ForInternal() % Param->GetMinAlignment(), 0) << U8(Param->GetName());
		PreviousOffset = Param->GetOffset_ForInternal();
	}
}

TEST(CatalogueSignatures, DisplayNamesComeFromMetadataOrTheName)
{
	const UFunction* GetLocation = FindFunction(TEXT("/Script/Engine.Actor"), TEXT("K2_GetActorLocation"));
	ASSERT_NE(GetLocation, nullptr);
	EXPECT_EQ(U8(GetLocation->GetDisplayNameText().ToString()), "Get Actor Location");
	const UFunction* PrintString = FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
	ASSERT_NE(PrintString, nullptr);
	EXPECT_EQ(U8(PrintString->GetDisplayNameText().ToString()), "Print String");
}

TEST(CatalogueSignatures, FunctionsAreFoundThroughSuperClasses)
{
	UClass* Character = FindClass(TEXT("/Script/Engine.Character"));
	ASSERT_NE(Character, nullptr);
	// Declared by Actor, found from Character; not declared by Character itself.
	const UFunction* Inherited = Character->FindFunctionByName(TEXT("K2_GetActorLocation"));
	ASSERT_NE(Inherited, nullptr);
	EXPECT_EQ(U8(Inherited->GetOwnerClass()->GetName()), "Actor");
	EXPECT_EQ(Character->FindFunctionByName(TEXT("K2_GetActorLocation"), EIncludeSuperFlag::ExcludeSuper), nullptr);
	EXPECT_NE(Character->FindFunctionByName(TEXT("Jump"), EIncludeSuperFlag::ExcludeSuper), nullptr);
	EXPECT_EQ(Character->FindFunctionByName(TEXT("NoSuchFunction")), nullptr);
}

TEST(CatalogueSignatures, DelegatePropertiesCarryTheirSignature)
{
	UClass* Actor = FindClass(TEXT("/Script/Engine.Actor"));
	ASSERT_NE(Actor, nullptr);
	const FMulticastDelegateProperty* Overlap = CastField<FMulticastDelegateProperty>(Actor->FindPropertyByName(TEXT("OnActorBeginOverlap")));
	ASSERT_NE(Overlap, nullptr);
	EXPECT_NE(CastField<FMulticastSparseDelegateProperty>(Overlap), nullptr);
	EXPECT_TRUE(Overlap->HasAnyPropertyFlags(CPF_BlueprintAssignable));
	ASSERT_NE(Overlap->SignatureFunction, nullptr);
	EXPECT_EQ(U8(Overlap->SignatureFunction->GetPathName()), "/Script/Engine.ActorBeginOverlapSignature__DelegateSignature");
	EXPECT_TRUE(Overlap->SignatureFunction->HasAllFunctionFlags(FUNC_Delegate | FUNC_MulticastDelegate));
	EXPECT_EQ(NamesOf(ParametersOf(Overlap->SignatureFunction)), (std::vector<std::string>{ "OverlappedActor", "OtherActor" }));

	// A delegate type declared inside a class lives in that class.
	const UFunction* AssetLoaded = FindObject<UFunction>(nullptr, TEXT("/Script/Engine.KismetSystemLibrary:OnAssetLoaded__DelegateSignature"));
	ASSERT_NE(AssetLoaded, nullptr);
	EXPECT_TRUE(AssetLoaded->HasAnyFunctionFlags(FUNC_Delegate));
	EXPECT_FALSE(AssetLoaded->HasAnyFunctionFlags(FUNC_MulticastDelegate));
}
