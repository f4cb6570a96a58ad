#include "CatalogueTestUtils.h"

#include "UObject/Package.h"
#include "UObject/UObjectIterator.h"

using namespace CatalogueTest;

TEST(CatalogueTypes, ClassesAreFoundByEverySpelling)
{
	UClass* Actor = FindClass(TEXT("/Script/Engine.Actor"));
	ASSERT_NE(Actor, nullptr);
	EXPECT_EQ(FindObject<UClass>(nullptr, TEXT("/script/engine.ACTOR")), Actor);
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("Actor")), Actor);
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("actor")), Actor);
	EXPECT_EQ(StaticFindFirstObject(UClass::StaticClass(), TEXT("/Script/Engine.Actor")), Actor);
	EXPECT_EQ(UClass::TryFindTypeSlow<UClass>(TEXT("Actor")), Actor);
	EXPECT_EQ(UClass::TryFindTypeSlow<UClass>(TEXT("/Script/Engine.Actor")), Actor);
	EXPECT_EQ(U8(UClass::TryConvertShortTypeNameToPathName(UClass::StaticClass(), TEXT("Actor")).ToString()), "/Script/Engine.Actor");
	// The C++ spelling is the prefix the class reports followed by its name.
	EXPECT_EQ(U8(FString(Actor->GetPrefixCPP()) + Actor->GetName()), "AActor");
	UClass* Component = FindClass(TEXT("/Script/Engine.ActorComponent"));
	ASSERT_NE(Component, nullptr);
	EXPECT_EQ(U8(FString(Component->GetPrefixCPP()) + Component->GetName()), "UActorComponent");
	// Other modules and interfaces.
	EXPECT_NE(FindFirstObject<UClass>(TEXT("UserWidget")), nullptr);
	EXPECT_NE(FindFirstObject<UClass>(TEXT("BTTask_BlueprintBase")), nullptr);
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("NavAgentInterface")), FindClass(TEXT("/Script/Engine.NavAgentInterface")));
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("NoSuchEngineClass")), nullptr);
}

TEST(CatalogueTypes, HierarchyFlagsAndConfigFollowTheEngine)
{
	struct FCase
	{
		const TCHAR* Path;
		const TCHAR* SuperPath;
		EClassFlags Required;
		EClassFlags Forbidden;
		const char* Config;
	};
	const FCase Cases[] = {
		{ TEXT("/Script/Engine.Actor"), TEXT("/Script/CoreUObject.Object"), CLASS_Native | CLASS_Config, CLASS_Abstract | CLASS_Interface, "Engine" },
		{ TEXT("/Script/Engine.Pawn"), TEXT("/Script/Engine.Actor"), CLASS_Native | CLASS_Config, CLASS_Abstract, "Game" },
		{ TEXT("/Script/Engine.Character"), TEXT("/Script/Engine.Pawn"), CLASS_Native, CLASS_Abstract, "Game" },
		{ TEXT("/Script/Engine.Controller"), TEXT("/Script/Engine.Actor"), CLASS_Abstract | CLASS_NotPlaceable, CLASS_None, "Engine" },
		// NotPlaceable is inherited from Controller, Abstract is not.
		{ TEXT("/Script/Engine.PlayerController"), TEXT("/Script/Engine.Controller"), CLASS_NotPlaceable | CLASS_Config, CLASS_Abstract, "Game" },
		{ TEXT("/Script/AIModule.AIController"), TEXT("/Script/Engine.Controller"), CLASS_NotPlaceable, CLASS_Abstract, "Engine" },
		{ TEXT("/Script/Engine.ActorComponent"), TEXT("/Script/CoreUObject.Object"), CLASS_Abstract | CLASS_DefaultToInstanced, CLASS_None, "Engine" },
		{ TEXT("/Script/Engine.StaticMeshComponent"), TEXT("/Script/Engine.MeshComponent"), CLASS_EditInlineNew | CLASS_DefaultToInstanced, CLASS_Abstract, "Engine" },
		{ TEXT("/Script/Engine.GameModeBase"), TEXT("/Script/Engine.Info"), CLASS_Transient | CLASS_NotPlaceable, CLASS_Abstract, "Game" },
		{ TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("/Script/Engine.BlueprintFunctionLibrary"), CLASS_Native, CLASS_Abstract, nullptr },
		{ TEXT("/Script/Engine.BlueprintFunctionLibrary"), TEXT("/Script/CoreUObject.Object"), CLASS_Abstract, CLASS_None, nullptr },
		{ TEXT("/Script/UMG.UserWidget"), TEXT("/Script/UMG.Widget"), CLASS_Abstract | CLASS_EditInlineNew, CLASS_None, nullptr },
		{ TEXT("/Script/Engine.NavAgentInterface"), TEXT("/Script/CoreUObject.Interface"), CLASS_Interface | CLASS_Abstract, CLASS_None, nullptr },
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Path));
		UClass* Class = FindClass(Case.Path);
		ASSERT_NE(Class, nullptr);
		ASSERT_NE(Class->GetSuperClass(), nullptr);
		EXPECT_EQ(U8(Class->GetSuperClass()->GetPathName()), U8(Case.SuperPath));
		EXPECT_TRUE(Class->HasAllClassFlags(Case.Required)) << std::hex << (uint32)Class->ClassFlags;
		EXPECT_FALSE(Class->HasAnyClassFlags(Case.Forbidden)) << std::hex << (uint32)Class->ClassFlags;
		if (Case.Config)
		{
			EXPECT_EQ(U8(Class->ClassConfigName.ToString()), Case.Config);
		}
	}
	UClass* AnimInstance = FindClass(TEXT("/Script/Engine.AnimInstance"));
	ASSERT_NE(AnimInstance, nullptr);
	ASSERT_NE(AnimInstance->ClassWithin, nullptr);
	EXPECT_EQ(U8(AnimInstance->ClassWithin->GetName()), "SkeletalMeshComponent");
	EXPECT_TRUE(FindClass(TEXT("/Script/Engine.Character"))->IsChildOf(FindClass(TEXT("/Script/Engine.Actor"))));
	EXPECT_FALSE(FindClass(TEXT("/Script/Engine.Actor"))->IsChildOf(FindClass(TEXT("/Script/Engine.Pawn"))));
}

TEST(CatalogueTypes, ClassMetadataAndInterfaces)
{
	UClass* Actor = FindClass(TEXT("/Script/Engine.Actor"));
	UClass* Pawn = FindClass(TEXT("/Script/Engine.Pawn"));
	UClass* Controller = FindClass(TEXT("/Script/Engine.Controller"));
	UClass* NavAgent = FindClass(TEXT("/Script/Engine.NavAgentInterface"));
	ASSERT_TRUE(Actor && Pawn && Controller && NavAgent);
	EXPECT_EQ(MetaOf(Actor, TEXT("IsBlueprintBase")), "true");
	EXPECT_EQ(MetaOf(Actor, TEXT("BlueprintType")), "true");
	EXPECT_EQ(MetaOf(Controller, TEXT("IsBlueprintBase")), "false");
	EXPECT_EQ(MetaOf(Controller, TEXT("HideCategories")), "Collision Rendering Transformation");
	EXPECT_EQ(MetaOf(FindClass(TEXT("/Script/Engine.CameraComponent")), TEXT("ClassGroupNames")), "Camera");
	EXPECT_TRUE(Pawn->ImplementsInterface(NavAgent));
	EXPECT_TRUE(FindClass(TEXT("/Script/Engine.Character"))->ImplementsInterface(NavAgent));
	EXPECT_FALSE(Actor->ImplementsInterface(NavAgent));
	EXPECT_TRUE(FindClass(TEXT("/Script/UMG.UserWidget"))->ImplementsInterface(FindClass(TEXT("/Script/UMG.NamedSlotInterface"))));
}

TEST(CatalogueTypes, MemberPropertiesCarryTheirFlags)
{
	UClass* Character = FindClass(TEXT("/Script/Engine.Character"));
	ASSERT_NE(Character, nullptr);
	const FObjectProperty* Mesh = CastField<FObjectProperty>(Character->FindPropertyByName(TEXT("Mesh")));
	ASSERT_NE(Mesh, nullptr);
	EXPECT_EQ(U8(Mesh->PropertyClass->GetName()), "SkeletalMeshComponent");
	EXPECT_TRUE(Mesh->HasAnyPropertyFlags(CPF_BlueprintVisible));
	EXPECT_TRUE(Mesh->HasAnyPropertyFlags(CPF_BlueprintReadOnly));
	EXPECT_TRUE(Mesh->HasAnyPropertyFlags(CPF_EditConst));
	EXPECT_EQ(MetaOf(Mesh, TEXT("AllowPrivateAccess")), "true");

	UClass* Actor = FindClass(TEXT("/Script/Engine.Actor"));
	ASSERT_NE(Actor, nullptr);
	const FProperty* Hidden = Actor->FindPropertyByName(TEXT("bHidden"));
	ASSERT_NE(Hidden, nullptr);
	EXPECT_NE(CastField<FBoolProperty>(Hidden), nullptr);
	EXPECT_TRUE(Hidden->HasAnyPropertyFlags(CPF_BlueprintVisible));
	EXPECT_EQ(MetaOf(Hidden, TEXT("Category")), "Rendering");
	// Inherited members are found from subclasses; the catalogue does not duplicate them.
	EXPECT_EQ(Character->FindPropertyByName(TEXT("bHidden")), Hidden);
}

TEST(CatalogueTypes, EnumsHaveTheirEntriesValuesAndDisplayNames)
{
	StartCatalogue();
	UEnum* Channel = FindObject<UEnum>(nullptr, TEXT("/Script/Engine.ECollisionChannel"));
	ASSERT_NE(Channel, nullptr);
	EXPECT_EQ(Channel->GetCppForm(), UEnum::ECppForm::Regular);
	EXPECT_EQ(MetaOf(Channel, TEXT("BlueprintType")), "true");
	EXPECT_EQ(Channel->GetValueByName(TEXT("ECC_WorldStatic")), 0);
	EXPECT_EQ(Channel->GetValueByName(TEXT("ECC_Pawn")), 2);
	EXPECT_EQ(Channel->GetValueByName(TEXT("ECC_Visibility")), 3);
	EXPECT_EQ(Channel->GetValueByName(TEXT("ECC_Camera")), 4);
	EXPECT_EQ(Channel->GetValueByName(TEXT("ECC_GameTraceChannel1")), 14);
	EXPECT_EQ(U8(Channel->GetNameStringByValue(1)), "ECC_WorldDynamic");
	EXPECT_EQ(U8(Channel->GetDisplayNameTextByValue(0).ToString()), "WorldStatic");
	EXPECT_EQ(U8(Channel->GetDisplayNameTextByValue(3).ToString()), "Visibility");
	// The source lists its own _MAX entry, so none is added.
	EXPECT_TRUE(Channel->ContainsExistingMax());
	EXPECT_EQ(Channel->GetIndexByName(TEXT("ECC_MAX")), Channel->NumEnums() - 1);

	UEnum* Movement = FindObject<UEnum>(nullptr, TEXT("/Script/Engine.EMovementMode"));
	ASSERT_NE(Movement, nullptr);
	EXPECT_EQ(Movement->GetValueByName(TEXT("MOVE_Walking")), 1);
	EXPECT_EQ(Movement->GetValueByName(TEXT("MOVE_Flying")), 5);

	// enum class entries are named "Type::Entry"; a _MAX entry is generated after the last value.
	UEnum* SortOrder = FindObject<UEnum>(nullptr, TEXT("/Script/Engine.EArraySortOrder"));
	ASSERT_NE(SortOrder, nullptr);
	EXPECT_EQ(SortOrder->GetCppForm(), UEnum::ECppForm::EnumClass);
	EXPECT_EQ(U8(SortOrder->GetNameByIndex(0).ToString()), "EArraySortOrder::Ascending");
	EXPECT_EQ(SortOrder->GetValueByName(TEXT("EArraySortOrder::Descending")), 1);
	EXPECT_EQ(U8(SortOrder->GetNameByIndex(2).ToString()), "EArraySortOrder::EArraySortOrder_MAX");

	// Values given by expressions in the source ("1 << 2", "X | Y").
	UEnum* AxisList = FindObject<UEnum>(nullptr, TEXT("/Script/CoreUObject.EAxisList"));
	ASSERT_NE(AxisList, nullptr);
	EXPECT_EQ(AxisList->GetValueByName(TEXT("EAxisList::Z")), 4);
	EXPECT_EQ(AxisList->GetValueByName(TEXT("EAxisList::XYZ")), 7);
	EXPECT_EQ(AxisList->GetValueByName(TEXT("EAxisList::All")), 15);

	// Hidden entries keep their metadata.
	UEnum* ScaleMethod = FindObject<UEnum>(nullptr, TEXT("/Script/Engine.ESpawnActorScaleMethod"));
	ASSERT_NE(ScaleMethod, nullptr);
	EXPECT_TRUE(ScaleMethod->HasMetaData(TEXT("Hidden"), 2));
	EXPECT_EQ(U8(ScaleMethod->GetDisplayNameTextByIndex(0).ToString()), "Override Root Component Scale");
}

TEST(CatalogueTypes, StructsAreLaidOutFromTheirMembers)
{
	StartCatalogue();
	UScriptStruct* HitResult = FindObject<UScriptStruct>(nullptr, TEXT("/Script/Engine.HitResult"));
	ASSERT_NE(HitResult, nullptr);
	std::vector<std::string> Names;
	for (TFieldIterator<FProperty> It(HitResult); It; ++It)
	{
		Names.push_back(U8(It->GetName()));
	}
	const std::vector<std::string> Expected = { "FaceIndex", "Time", "Distance", "Location", "ImpactPoint", "Normal",
		"ImpactNormal", "TraceStart", "TraceEnd", "PenetrationDepth", "MyItem", "Item", "ElementIndex", "bBlockingHit",
		"bStartPenetrating", "PhysMaterial", "HitObjectHandle", "Component", "BoneName", "MyBoneName" };
	EXPECT_EQ(Names, Expected);
	EXPECT_EQ(MetaOf(HitResult, TEXT("HasNativeBreak")), "/Script/Engine.GameplayStatics.BreakHitResult");

	// Location is an FVector_NetQuantize: a struct whose members come from FVector.
	const FStructProperty* Location = CastField<FStructProperty>(HitResult->FindPropertyByName(TEXT("Location")));
	ASSERT_NE(Location, nullptr);
	EXPECT_TRUE(Location->Struct->IsChildOf(TBaseStructure<FVector>::Get()));
	EXPECT_NE(Location->Struct->FindPropertyByName(TEXT("X")), nullptr);
	const FWeakObjectProperty* PhysMaterial = CastField<FWeakObjectProperty>(HitResult->FindPropertyByName(TEXT("PhysMaterial")));
	ASSERT_NE(PhysMaterial, nullptr);
	EXPECT_EQ(U8(PhysMaterial->PropertyClass->GetPathName()), "/Script/PhysicsCore.PhysicalMaterial");

	// Every member has its own place inside the struct.
	int32 End = 0;
	for (TFieldIterator<FProperty> It(HitResult); It; ++It)
	{
		EXPECT_GE(It->GetOffset_ForInternal(), End) << U8(It->GetName());
		End = It->GetOffset_ForInternal() + It->GetSize();
	}
	EXPECT_GE(HitResult->GetPropertiesSize(), End);

	// A value can be made, written through the reflected member and destroyed.
	TArray<uint8> Memory;
	Memory.AddZeroed(HitResult->GetStructureSize());
	HitResult->InitializeStruct(Memory.GetData());
	const FNameProperty* BoneName = CastField<FNameProperty>(HitResult->FindPropertyByName(TEXT("BoneName")));
	ASSERT_NE(BoneName, nullptr);
	*BoneName->ContainerPtrToValuePtr<FName>(Memory.GetData()) = FName(TEXT("spine_01"));
	FString Exported;
	BoneName->ExportText_InContainer(0, Exported, Memory.GetData(), nullptr, nullptr, PPF_None);
	EXPECT_EQ(U8(Exported), "spine_01");
	HitResult->DestroyStruct(Memory.GetData());

	// Core structs are the C++ ones; the catalogue only adds metadata to them.
	UScriptStruct* Vector = FindObject<UScriptStruct>(nullptr, TEXT("/Script/CoreUObject.Vector"));
	EXPECT_EQ(Vector, TBaseStructure<FVector>::Get());
	EXPECT_EQ(Vector->GetStructureSize(), (int32)sizeof(FVector));
	EXPECT_EQ(MetaOf(Vector, TEXT("HasNativeMake")), "/Script/Engine.KismetMathLibrary.MakeVector");
}

TEST(CatalogueTypes, InstancesOfDataDefinedClassesCarryTheirDefaults)
{
	UClass* Movement = FindClass(TEXT("/Script/Engine.CharacterMovementComponent"));
	UClass* Camera = FindClass(TEXT("/Script/Engine.CameraComponent"));
	UClass* StaticMesh = FindClass(TEXT("/Script/Engine.StaticMeshComponent"));
	ASSERT_TRUE(Movement && Camera && StaticMesh);

	UObject* MovementObject = NewObject<UObject>(GetTransientPackage(), Movement);
	ASSERT_NE(MovementObject, nullptr);
	EXPECT_EQ(MovementObject->GetClass(), Movement);
	EXPECT_TRUE(MovementObject->IsA(FindClass(TEXT("/Script/Engine.ActorComponent"))));
	const FFloatProperty* Height = CastField<FFloatProperty>(Movement->FindPropertyByName(TEXT("StayBasedInAirHeight")));
	ASSERT_NE(Height, nullptr);
	EXPECT_EQ(*Height->ContainerPtrToValuePtr<float>(MovementObject), 1000.0f);
	// Members without a recorded initial value start at zero.
	const FFloatProperty* MaxWalkSpeed = CastField<FFloatProperty>(Movement->FindPropertyByName(TEXT("MaxWalkSpeed")));
	ASSERT_NE(MaxWalkSpeed, nullptr);
	EXPECT_EQ(*MaxWalkSpeed->ContainerPtrToValuePtr<float>(MovementObject), 0.0f);

	UObject* CameraObject = NewObject<UObject>(GetTransientPackage(), Camera);
	const FBoolProperty* DrawFrustum = CastField<FBoolProperty>(Camera->FindPropertyByName(TEXT("bDrawFrustumAllowed")));
	ASSERT_NE(DrawFrustum, nullptr);
	EXPECT_TRUE(DrawFrustum->GetPropertyValue_InContainer(CameraObject));
	const FByteProperty* AspectRatio = CastField<FByteProperty>(Camera->FindPropertyByName(TEXT("AspectRatioAxisConstraint")));
	ASSERT_NE(AspectRatio, nullptr);
	ASSERT_NE(AspectRatio->Enum, nullptr);
	EXPECT_EQ(*AspectRatio->ContainerPtrToValuePtr<uint8>(CameraObject), (uint8)AspectRatio->Enum->GetValueByName(TEXT("AspectRatio_MaintainXFOV")));

	UObject* MeshObject = NewObject<UObject>(GetTransientPackage(), StaticMesh);
	const FStructProperty* TileCount = CastField<FStructProperty>(StaticMesh->FindPropertyByName(TEXT("MaterialCacheTileCount")));
	ASSERT_NE(TileCount, nullptr);
	EXPECT_EQ(*TileCount->ContainerPtrToValuePtr<FIntPoint>(MeshObject), FIntPoint(8, 8));

	// A subclass starts from its super class's defaults.
	UClass* Character = FindClass(TEXT("/Script/Engine.Character"));
	UObject* CharacterObject = NewObject<UObject>(GetTransientPackage(), Character);
	EXPECT_TRUE(CharacterObject->IsA(FindClass(TEXT("/Script/Engine.Pawn"))));
	EXPECT_EQ(CharacterObject->GetClass()->GetDefaultObject()->GetClass(), Character);
}

TEST(CatalogueTypes, MinimalTypesAreFlagged)
{
	StartCatalogue();
	UClass* StaticMesh = FindClass(TEXT("/Script/Engine.StaticMesh"));
	ASSERT_NE(StaticMesh, nullptr);
	EXPECT_EQ(U8(StaticMesh->GetSuperClass()->GetName()), "StreamableRenderAsset");
	EXPECT_TRUE(UE::Catalogue::IsCatalogueType(StaticMesh));
	EXPECT_TRUE(UE::Catalogue::IsMinimalType(StaticMesh));
	UClass* Actor = FindClass(TEXT("/Script/Engine.Actor"));
	EXPECT_TRUE(UE::Catalogue::IsCatalogueType(Actor));
	EXPECT_FALSE(UE::Catalogue::IsMinimalType(Actor));
	EXPECT_TRUE(UE::Catalogue::IsMinimalType(FindObject<UScriptStruct>(nullptr, TEXT("/Script/InputCore.Key"))));
	EXPECT_TRUE(UE::Catalogue::IsMinimalType(FindObject<UEnum>(nullptr, TEXT("/Script/SlateCore.ECheckBoxState"))));
	// C++ types count only when the catalogue completed them: Object gains ExecuteUbergraph, Package nothing.
	EXPECT_FALSE(UE::Catalogue::IsCatalogueType(UPackage::StaticClass()));
	EXPECT_TRUE(UE::Catalogue::IsCatalogueType(UObject::StaticClass()));
	EXPECT_FALSE(UE::Catalogue::IsMinimalType(UObject::StaticClass()));
	EXPECT_FALSE(UE::Catalogue::IsCatalogueType(TBaseStructure<FVector>::Get()));
	EXPECT_FALSE(UE::Catalogue::IsCatalogueType(nullptr));
	// Minimal types still sit in the right module and hierarchy.
	EXPECT_TRUE(FindClass(TEXT("/Script/Engine.SoundBase")) != nullptr);
	EXPECT_TRUE(FindClass(TEXT("/Script/Engine.MaterialInstanceDynamic"))->IsChildOf(FindClass(TEXT("/Script/Engine.MaterialInterface"))));
	EXPECT_TRUE(FindClass(TEXT("/Script/UMG.CanvasPanelSlot"))->IsChildOf(FindClass(TEXT("/Script/UMG.PanelSlot"))));
	EXPECT_NE(FindObject<UScriptStruct>(nullptr, TEXT("/Script/CoreUObject.RandomStream")), nullptr);
}

TEST(CatalogueTypes, TheCoreSetIsPresent)
{
	StartCatalogue();
	const TCHAR* const Classes[] = {
		TEXT("/Script/CoreUObject.Object"), TEXT("/Script/CoreUObject.Interface"), TEXT("/Script/Engine.Actor"), TEXT("/Script/Engine.Pawn"),
		TEXT("/Script/Engine.Character"), TEXT("/Script/Engine.Controller"), TEXT("/Script/Engine.PlayerController"),
		TEXT("/Script/Engine.GameModeBase"), TEXT("/Script/Engine.ActorComponent"), TEXT("/Script/Engine.SceneComponent"),
		TEXT("/Script/Engine.PrimitiveComponent"), TEXT("/Script/Engine.StaticMeshComponent"), TEXT("/Script/Engine.SkeletalMeshComponent"),
		TEXT("/Script/Engine.CapsuleComponent"), TEXT("/Script/Engine.BoxComponent"), TEXT("/Script/Engine.SphereComponent"),
		TEXT("/Script/Engine.CameraComponent"), TEXT("/Script/Engine.SpringArmComponent"), TEXT("/Script/Engine.CharacterMovementComponent"),
		TEXT("/Script/Engine.KismetMathLibrary"), TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("/Script/Engine.KismetStringLibrary"),
		TEXT("/Script/Engine.KismetTextLibrary"), TEXT("/Script/Engine.KismetArrayLibrary"), TEXT("/Script/Engine.GameplayStatics"),
		TEXT("/Script/UMG.UserWidget"), TEXT("/Script/Engine.AnimInstance"), TEXT("/Script/AIModule.BTTask_BlueprintBase"),
		TEXT("/Script/Engine.BlueprintFunctionLibrary"),
	};
	for (const TCHAR* Path : Classes)
	{
		EXPECT_NE(FindObject<UClass>(nullptr, Path), nullptr) << U8(Path);
	}
	const TCHAR* const Structs[] = {
		TEXT("/Script/CoreUObject.Vector"), TEXT("/Script/CoreUObject.Rotator"), TEXT("/Script/CoreUObject.Transform"),
		TEXT("/Script/CoreUObject.LinearColor"), TEXT("/Script/CoreUObject.Color"), TEXT("/Script/CoreUObject.Vector2D"),
		TEXT("/Script/Engine.HitResult"), TEXT("/Script/CoreUObject.Timespan"), TEXT("/Script/CoreUObject.DateTime"),
	};
	for (const TCHAR* Path : Structs)
	{
		const UScriptStruct* Struct = FindObject<UScriptStruct>(nullptr, Path);
		ASSERT_NE(Struct, nullptr) << U8(Path);
		EXPECT_GT(Struct->GetStructureSize(), 0) << U8(Path);
	}
	EXPECT_NE(FindObject<UEnum>(nullptr, TEXT("/Script/Engine.ECollisionChannel")), nullptr);
	EXPECT_NE(FindObject<UEnum>(nullptr, TEXT("/Script/Engine.EMovementMode")), nullptr);
	// Data-defined core structs get their members from the catalogue: FDateTime holds its ticks.
	const UScriptStruct* DateTime = FindObject<UScriptStruct>(nullptr, TEXT("/Script/CoreUObject.DateTime"));
	ASSERT_NE(DateTime, nullptr);
	EXPECT_NE(CastField<FInt64Property>(DateTime->FindPropertyByName(TEXT("Ticks"))), nullptr);
}
