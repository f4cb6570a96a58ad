#include "UObject/Class.h"
#include "UObject/UnrealType.h"
#include "UObject/TopLevelAssetPath.h"
#include "UObject/SoftObjectPath.h"
#include "ObjectRegistry.h"

// The core structs of /Script/CoreUObject, reflected as the engine's NoExportTypes.h declares them: the
// C++ types come from Core; their members are listed here with their offsets and the engine's flags.

using namespace UE::CoreUObject::Private;

namespace
{
	constexpr EObjectFlags NativeFieldFlags = RF_Public | RF_MarkAsNative | RF_Transient;
	/** EditAnywhere, BlueprintReadWrite, SaveGame. */
	constexpr EPropertyFlags BlueprintMemberFlags = CPF_Edit | CPF_BlueprintVisible | CPF_SaveGame | CPF_NativeAccessSpecifierPublic;
	/** EditAnywhere, SaveGame. */
	constexpr EPropertyFlags EditMemberFlags = CPF_Edit | CPF_SaveGame | CPF_NativeAccessSpecifierPublic;
	/** immutable, noexport: kept and exported as one unit. */
	constexpr EStructFlags CoreStructFlags = STRUCT_Atomic | STRUCT_Immutable | STRUCT_NoExport;

	template <typename PropertyType, typename StructType, typename MemberType, typename... ArgTypes>
	PropertyType* AddMember(UScriptStruct* Struct, const TCHAR* Name, MemberType StructType::*Member, EPropertyFlags Flags, const TCHAR* Category, ArgTypes... Args)
	{
		PropertyType* Property = new PropertyType(Struct, FName(Name), NativeFieldFlags, MemberOffset(Member), Flags, Args...);
		Property->SetMetaData(TEXT("Category"), Category);
		Struct->AddCppProperty(Property);
		return Property;
	}

	void SetMakeBreak(UScriptStruct* Struct, const TCHAR* Make, const TCHAR* Break)
	{
		Struct->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
		if (Make)
		{
			Struct->SetMetaData(TEXT("HasNativeMake"), Make);
		}
		if (Break)
		{
			Struct->SetMetaData(TEXT("HasNativeBreak"), Break);
		}
	}

	/** FGuid exports as its 32 hex digits, as the engine's FGuid::ExportTextItem writes it. */
	struct FGuidStructOps : UScriptStruct::TCppStructOps<FGuid>
	{
		virtual bool HasExportTextItem() const override { return true; }
		virtual bool ExportTextItem(FString& ValueStr, const void* PropertyValue, const void* DefaultValue, UObject* Parent, int32 PortFlags,
			UObject* ExportRootScope) const override
		{
			const FGuid& Guid = *(const FGuid*)PropertyValue;
			if (PortFlags & PPF_ExportCpp)
			{
				ValueStr += FString::Printf(TEXT("FGuid(0x%08X, 0x%08X, 0x%08X, 0x%08X)"), Guid.A, Guid.B, Guid.C, Guid.D);
				return true;
			}
			ValueStr += Guid.ToString(EGuidFormats::Digits);
			return true;
		}
		virtual bool HasImportTextItem() const override { return true; }
		virtual bool ImportTextItem(const TCHAR*& Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const override
		{
			if (FCString::Strlen(Buffer) < 32)
			{
				return false;
			}
			FGuid Parsed;
			if (!FGuid::ParseExact(FString::ConstructFromPtrSize(Buffer, 32), EGuidFormats::Digits, Parsed))
			{
				return false;
			}
			*(FGuid*)Data = Parsed;
			Buffer += 32;
			return true;
		}
	};

	template <typename T>
	UScriptStruct* BuildCoreStruct(UScriptStruct*& Cache, const TCHAR* Name, UScriptStruct::ICppStructOps* Ops, EStructFlags Flags, void (*InitFn)(UScriptStruct*),
		UScriptStruct* (*SuperFn)() = nullptr)
	{
		if (!Cache)
		{
			ConstructNativeScriptStruct(Cache, TEXT("/Script/CoreUObject"), Name, Ops, Flags, SuperFn, InitFn);
		}
		else
		{
			delete Ops;
		}
		return Cache;
	}
}

/** FTransform keeps its parts protected; a derived type may name them. */
struct FTransformMembers : FTransform
{
	static auto RotationMember() { return &FTransformMembers::Rotation; }
	static auto TranslationMember() { return &FTransformMembers::Translation; }
	static auto Scale3DMember() { return &FTransformMembers::Scale3D; }
};

struct FCoreStructReflection
{
	static void TopLevelAssetPath(UScriptStruct* Struct)
	{
		AddMember<FNameProperty>(Struct, TEXT("PackageName"), &FTopLevelAssetPath::PackageName, CPF_NativeAccessSpecifierPrivate, TEXT("TopLevelAssetPath"));
		AddMember<FNameProperty>(Struct, TEXT("AssetName"), &FTopLevelAssetPath::AssetName, CPF_NativeAccessSpecifierPrivate, TEXT("TopLevelAssetPath"));
		Struct->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
	}

	static void SoftObjectPath(UScriptStruct* Struct)
	{
		AddMember<FStructProperty>(Struct, TEXT("AssetPath"), &FSoftObjectPath::AssetPath, CPF_NativeAccessSpecifierPrivate, TEXT("SoftObjectPath"),
			TBaseStructure<FTopLevelAssetPath>::Get());
		AddMember<FStrProperty>(Struct, TEXT("SubPathString"), &FSoftObjectPath::SubPathString, CPF_NativeAccessSpecifierPrivate, TEXT("SoftObjectPath"));
		Struct->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
	}
};

UScriptStruct* TBaseStructure<FVector>::Get()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FVector>(Cache, TEXT("Vector"), new UScriptStruct::TCppStructOps<FVector>(), CoreStructFlags, [](UScriptStruct* Struct) {
		AddMember<FDoubleProperty>(Struct, TEXT("X"), &FVector::X, BlueprintMemberFlags, TEXT("Vector"));
		AddMember<FDoubleProperty>(Struct, TEXT("Y"), &FVector::Y, BlueprintMemberFlags, TEXT("Vector"));
		AddMember<FDoubleProperty>(Struct, TEXT("Z"), &FVector::Z, BlueprintMemberFlags, TEXT("Vector"));
		SetMakeBreak(Struct, TEXT("/Script/Engine.KismetMathLibrary.MakeVector"), TEXT("/Script/Engine.KismetMathLibrary.BreakVector"));
	});
}

UScriptStruct* TBaseStructure<FVector2D>::Get()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FVector2D>(Cache, TEXT("Vector2D"), new UScriptStruct::TCppStructOps<FVector2D>(), CoreStructFlags, [](UScriptStruct* Struct) {
		AddMember<FDoubleProperty>(Struct, TEXT("X"), &FVector2D::X, BlueprintMemberFlags, TEXT("Vector2D"));
		AddMember<FDoubleProperty>(Struct, TEXT("Y"), &FVector2D::Y, BlueprintMemberFlags, TEXT("Vector2D"));
		SetMakeBreak(Struct, TEXT("/Script/Engine.KismetMathLibrary.MakeVector2D"), TEXT("/Script/Engine.KismetMathLibrary.BreakVector2D"));
	});
}

UScriptStruct* TBaseStructure<FRotator>::Get()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FRotator>(Cache, TEXT("Rotator"), new UScriptStruct::TCppStructOps<FRotator>(), CoreStructFlags, [](UScriptStruct* Struct) {
		AddMember<FDoubleProperty>(Struct, TEXT("Pitch"), &FRotator::Pitch, BlueprintMemberFlags, TEXT("Rotator"))->SetMetaData(TEXT("DisplayName"), TEXT("Y"));
		AddMember<FDoubleProperty>(Struct, TEXT("Yaw"), &FRotator::Yaw, BlueprintMemberFlags, TEXT("Rotator"))->SetMetaData(TEXT("DisplayName"), TEXT("Z"));
		AddMember<FDoubleProperty>(Struct, TEXT("Roll"), &FRotator::Roll, BlueprintMemberFlags, TEXT("Rotator"))->SetMetaData(TEXT("DisplayName"), TEXT("X"));
		SetMakeBreak(Struct, TEXT("/Script/Engine.KismetMathLibrary.MakeRotator"), TEXT("/Script/Engine.KismetMathLibrary.BreakRotator"));
	});
}

UScriptStruct* TBaseStructure<FQuat>::Get()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FQuat>(Cache, TEXT("Quat"), new UScriptStruct::TCppStructOps<FQuat>(), CoreStructFlags, [](UScriptStruct* Struct) {
		AddMember<FDoubleProperty>(Struct, TEXT("X"), &FQuat::X, BlueprintMemberFlags, TEXT("Quat"));
		AddMember<FDoubleProperty>(Struct, TEXT("Y"), &FQuat::Y, BlueprintMemberFlags, TEXT("Quat"));
		AddMember<FDoubleProperty>(Struct, TEXT("Z"), &FQuat::Z, BlueprintMemberFlags, TEXT("Quat"));
		AddMember<FDoubleProperty>(Struct, TEXT("W"), &FQuat::W, BlueprintMemberFlags, TEXT("Quat"));
		SetMakeBreak(Struct, TEXT("/Script/Engine.KismetMathLibrary.MakeQuat"), TEXT("/Script/Engine.KismetMathLibrary.BreakQuat"));
	});
}

UScriptStruct* TBaseStructure<FTransform>::Get()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FTransform>(Cache, TEXT("Transform"), new UScriptStruct::TCppStructOps<FTransform>(), CoreStructFlags, [](UScriptStruct* Struct) {
		AddMember<FStructProperty>(Struct, TEXT("Rotation"), FTransformMembers::RotationMember(), BlueprintMemberFlags, TEXT("Transform"), TBaseStructure<FQuat>::Get());
		AddMember<FStructProperty>(Struct, TEXT("Translation"), FTransformMembers::TranslationMember(), BlueprintMemberFlags, TEXT("Transform"), TBaseStructure<FVector>::Get());
		AddMember<FStructProperty>(Struct, TEXT("Scale3D"), FTransformMembers::Scale3DMember(), BlueprintMemberFlags, TEXT("Transform"), TBaseStructure<FVector>::Get());
		SetMakeBreak(Struct, TEXT("/Script/Engine.KismetMathLibrary.MakeTransform"), TEXT("/Script/Engine.KismetMathLibrary.BreakTransform"));
	});
}

UScriptStruct* TBaseStructure<FLinearColor>::Get()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FLinearColor>(Cache, TEXT("LinearColor"), new UScriptStruct::TCppStructOps<FLinearColor>(), CoreStructFlags, [](UScriptStruct* Struct) {
		AddMember<FFloatProperty>(Struct, TEXT("R"), &FLinearColor::R, BlueprintMemberFlags, TEXT("LinearColor"));
		AddMember<FFloatProperty>(Struct, TEXT("G"), &FLinearColor::G, BlueprintMemberFlags, TEXT("LinearColor"));
		AddMember<FFloatProperty>(Struct, TEXT("B"), &FLinearColor::B, BlueprintMemberFlags, TEXT("LinearColor"));
		AddMember<FFloatProperty>(Struct, TEXT("A"), &FLinearColor::A, BlueprintMemberFlags, TEXT("LinearColor"));
		SetMakeBreak(Struct, nullptr, nullptr);
	});
}

UScriptStruct* TBaseStructure<FColor>::Get()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FColor>(Cache, TEXT("Color"), new UScriptStruct::TCppStructOps<FColor>(), CoreStructFlags, [](UScriptStruct* Struct) {
		// Blue first: the engine's FColor stores its channels in BGRA order.
		for (auto [Name, Member] : { std::pair{ TEXT("B"), &FColor::B }, std::pair{ TEXT("G"), &FColor::G }, std::pair{ TEXT("R"), &FColor::R }, std::pair{ TEXT("A"), &FColor::A } })
		{
			FByteProperty* Channel = AddMember<FByteProperty>(Struct, Name, Member, BlueprintMemberFlags, TEXT("Color"), (UEnum*)nullptr);
			Channel->SetMetaData(TEXT("ClampMin"), TEXT("0"));
			Channel->SetMetaData(TEXT("ClampMax"), TEXT("255"));
		}
		SetMakeBreak(Struct, nullptr, nullptr);
	});
}

UScriptStruct* TBaseStructure<FGuid>::Get()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FGuid>(Cache, TEXT("Guid"), new FGuidStructOps(), CoreStructFlags, [](UScriptStruct* Struct) {
		AddMember<FIntProperty>(Struct, TEXT("A"), &FGuid::A, EditMemberFlags, TEXT("Guid"));
		AddMember<FIntProperty>(Struct, TEXT("B"), &FGuid::B, EditMemberFlags, TEXT("Guid"));
		AddMember<FIntProperty>(Struct, TEXT("C"), &FGuid::C, EditMemberFlags, TEXT("Guid"));
		AddMember<FIntProperty>(Struct, TEXT("D"), &FGuid::D, EditMemberFlags, TEXT("Guid"));
		SetMakeBreak(Struct, nullptr, nullptr);
	});
}

UScriptStruct* TBaseStructure<FBox2D>::Get()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FBox2D>(Cache, TEXT("Box2D"), new UScriptStruct::TCppStructOps<FBox2D>(), CoreStructFlags, [](UScriptStruct* Struct) {
		AddMember<FStructProperty>(Struct, TEXT("Min"), &FBox2D::Min, BlueprintMemberFlags, TEXT("Box2D"), TBaseStructure<FVector2D>::Get())->SetMetaData(TEXT("EditCondition"), TEXT("bIsValid"));
		AddMember<FStructProperty>(Struct, TEXT("Max"), &FBox2D::Max, BlueprintMemberFlags, TEXT("Box2D"), TBaseStructure<FVector2D>::Get())->SetMetaData(TEXT("EditCondition"), TEXT("bIsValid"));
		FBoolProperty* Valid = new FBoolProperty(Struct, FName(TEXT("bIsValid")), NativeFieldFlags, MemberOffset(&FBox2D::bIsValid), BlueprintMemberFlags, 0,
			(uint32)sizeof(bool), true);
		Valid->SetMetaData(TEXT("Category"), TEXT("Box2D"));
		Valid->SetMetaData(TEXT("ScriptName"), TEXT("bIsValid"));
		Struct->AddCppProperty(Valid);
		SetMakeBreak(Struct, TEXT("/Script/Engine.KismetMathLibrary.MakeBox2D"), nullptr);
	});
}

UScriptStruct* TBaseStructure<FIntPoint>::Get()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FIntPoint>(Cache, TEXT("IntPoint"), new UScriptStruct::TCppStructOps<FIntPoint>(), CoreStructFlags, [](UScriptStruct* Struct) {
		AddMember<FIntProperty>(Struct, TEXT("X"), &FIntPoint::X, BlueprintMemberFlags, TEXT("IntPoint"));
		AddMember<FIntProperty>(Struct, TEXT("Y"), &FIntPoint::Y, BlueprintMemberFlags, TEXT("IntPoint"));
		SetMakeBreak(Struct, nullptr, nullptr);
	});
}

UScriptStruct* FTopLevelAssetPath::StaticStruct()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FTopLevelAssetPath>(Cache, TEXT("TopLevelAssetPath"), new UScriptStruct::TCppStructOps<FTopLevelAssetPath>(), STRUCT_NoExport,
		&FCoreStructReflection::TopLevelAssetPath);
}

UScriptStruct* FSoftObjectPath::StaticStruct()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FSoftObjectPath>(Cache, TEXT("SoftObjectPath"), new UScriptStruct::TCppStructOps<FSoftObjectPath>(), STRUCT_NoExport,
		&FCoreStructReflection::SoftObjectPath);
}

UScriptStruct* FSoftClassPath::StaticStruct()
{
	static UScriptStruct* Cache = nullptr;
	return BuildCoreStruct<FSoftClassPath>(Cache, TEXT("SoftClassPath"), new UScriptStruct::TCppStructOps<FSoftClassPath>(), STRUCT_NoExport,
		[](UScriptStruct* Struct) { Struct->SetMetaData(TEXT("BlueprintType"), TEXT("true")); }, []() { return FSoftObjectPath::StaticStruct(); });
}

namespace
{
	// Core structs are findable by path ("/Script/CoreUObject.Vector") before anyone asks for them by type.
	FRegisterCompiledInType RegisterVector([]() -> UObject* { return TBaseStructure<FVector>::Get(); });
	FRegisterCompiledInType RegisterVector2D([]() -> UObject* { return TBaseStructure<FVector2D>::Get(); });
	FRegisterCompiledInType RegisterRotator([]() -> UObject* { return TBaseStructure<FRotator>::Get(); });
	FRegisterCompiledInType RegisterQuat([]() -> UObject* { return TBaseStructure<FQuat>::Get(); });
	FRegisterCompiledInType RegisterTransform([]() -> UObject* { return TBaseStructure<FTransform>::Get(); });
	FRegisterCompiledInType RegisterLinearColor([]() -> UObject* { return TBaseStructure<FLinearColor>::Get(); });
	FRegisterCompiledInType RegisterColor([]() -> UObject* { return TBaseStructure<FColor>::Get(); });
	FRegisterCompiledInType RegisterGuid([]() -> UObject* { return TBaseStructure<FGuid>::Get(); });
	FRegisterCompiledInType RegisterBox2D([]() -> UObject* { return TBaseStructure<FBox2D>::Get(); });
	FRegisterCompiledInType RegisterIntPoint([]() -> UObject* { return TBaseStructure<FIntPoint>::Get(); });
	FRegisterCompiledInType RegisterTopLevelAssetPath([]() -> UObject* { return FTopLevelAssetPath::StaticStruct(); });
	FRegisterCompiledInType RegisterSoftObjectPath([]() -> UObject* { return FSoftObjectPath::StaticStruct(); });
	FRegisterCompiledInType RegisterSoftClassPath([]() -> UObject* { return FSoftClassPath::StaticStruct(); });
}
