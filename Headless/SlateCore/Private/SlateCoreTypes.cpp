#include "Layout/Margin.h"
#include "Types/SlateEnums.h"
#include "Widgets/Layout/Anchors.h"
#include "UObject/UnrealType.h"

namespace
{
	/** Gives an enum its entries in declaration order, with the engine's "<Prefix>_MAX" after them. */
	void SetEntries(UEnum* Enum, std::initializer_list<const TCHAR*> Names, UEnum::ECppForm Form)
	{
		TArray<TPair<FName, int64>> Entries;
		int64 Value = 0;
		for (const TCHAR* Name : Names)
		{
			Entries.Emplace(FName(Name), Value++);
		}
		Enum->SetEnums(Entries, Form, EEnumFlags::None, true);
		Enum->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
	}
}

/**
 * A namespaced enum ("ETextCommit::Type") is registered under the namespace's name, which the engine's
 * macro for plain enums cannot spell.
 */
#define IMPLEMENT_NAMESPACED_ENUM(TNamespace, TPackage, ...) \
	template <> UEnum* StaticEnum<TNamespace::Type>() \
	{ \
		static UEnum* PrivateStaticEnum = nullptr; \
		if (!PrivateStaticEnum) \
		{ \
			::UE::CoreUObject::Private::ConstructNativeEnum(PrivateStaticEnum, TPackage, TEXT(#TNamespace), TEXT(#TNamespace "::Type"), \
				[](UEnum* Enum) { __VA_ARGS__ }); \
		} \
		return PrivateStaticEnum; \
	} \
	static ::UE::CoreUObject::Private::FRegisterCompiledInType Z_CompiledInEnum_##TNamespace([]() -> UObject* { return StaticEnum<TNamespace::Type>(); });

IMPLEMENT_NATIVE_ENUM(EHorizontalAlignment, TEXT("/Script/SlateCore"),
	SetEntries(Enum, {TEXT("HAlign_Fill"), TEXT("HAlign_Left"), TEXT("HAlign_Center"), TEXT("HAlign_Right")}, UEnum::ECppForm::Regular);
)

IMPLEMENT_NATIVE_ENUM(EVerticalAlignment, TEXT("/Script/SlateCore"),
	SetEntries(Enum, {TEXT("VAlign_Fill"), TEXT("VAlign_Top"), TEXT("VAlign_Center"), TEXT("VAlign_Bottom")}, UEnum::ECppForm::Regular);
)

IMPLEMENT_NATIVE_ENUM(EOrientation, TEXT("/Script/SlateCore"),
	SetEntries(Enum, {TEXT("Orient_Horizontal"), TEXT("Orient_Vertical")}, UEnum::ECppForm::Regular);
)

IMPLEMENT_NAMESPACED_ENUM(ETextCommit, TEXT("/Script/SlateCore"),
	SetEntries(Enum, {TEXT("ETextCommit::Default"), TEXT("ETextCommit::OnEnter"), TEXT("ETextCommit::OnUserMovedFocus"), TEXT("ETextCommit::OnCleared")}, UEnum::ECppForm::Namespaced);
)

IMPLEMENT_NAMESPACED_ENUM(ESelectInfo, TEXT("/Script/SlateCore"),
	SetEntries(Enum, {TEXT("ESelectInfo::OnKeyPress"), TEXT("ESelectInfo::OnNavigation"), TEXT("ESelectInfo::OnMouseClick"), TEXT("ESelectInfo::Direct")}, UEnum::ECppForm::Namespaced);
)

IMPLEMENT_SCRIPT_STRUCT(FMargin, TEXT("/Script/SlateCore"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FFloatProperty, Left, CPF_Edit | CPF_BlueprintVisible);
	UE_NATIVE_PROPERTY(FFloatProperty, Top, CPF_Edit | CPF_BlueprintVisible);
	UE_NATIVE_PROPERTY(FFloatProperty, Right, CPF_Edit | CPF_BlueprintVisible);
	UE_NATIVE_PROPERTY(FFloatProperty, Bottom, CPF_Edit | CPF_BlueprintVisible);
	Struct->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
)

// The engine declares the anchors with Slate's layout widgets; they are registered in Slate's script package.
IMPLEMENT_SCRIPT_STRUCT(FAnchors, TEXT("/Script/Slate"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FStructProperty, Minimum, CPF_Edit | CPF_BlueprintVisible, TBaseStructure<FVector2D>::Get());
	UE_NATIVE_PROPERTY(FStructProperty, Maximum, CPF_Edit | CPF_BlueprintVisible, TBaseStructure<FVector2D>::Get());
	Struct->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
)
