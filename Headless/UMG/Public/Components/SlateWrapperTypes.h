#pragma once

#include "CoreMinimal.h"
#include "Containers/EnumAsByte.h"
#include "UObject/Class.h"

/** Whether a widget is shown, takes space and takes the pointer. */
enum class ESlateVisibility : uint8
{
	Visible,
	Collapsed,
	Hidden,
	HitTestInvisible,
	SelfHitTestInvisible,
};

/** How a box slot is sized along its box: by its content, or by a share of the space left. */
namespace ESlateSizeRule
{
	enum Type : int
	{
		Automatic,
		Fill,
	};
}

/** A box slot's size: Value is the share of the space left when the rule is Fill. */
struct FSlateChildSize
{
	UMG_API static UScriptStruct* StaticStruct();

	FSlateChildSize() = default;
	explicit FSlateChildSize(ESlateSizeRule::Type InSizeRule) : SizeRule(InSizeRule) {}

	bool operator==(const FSlateChildSize& Other) const { return Value == Other.Value && SizeRule == Other.SizeRule; }

	float Value = 1.0f;
	TEnumAsByte<ESlateSizeRule::Type> SizeRule = ESlateSizeRule::Fill;
};

template <> UMG_API UEnum* StaticEnum<ESlateVisibility>();
template <> UMG_API UEnum* StaticEnum<ESlateSizeRule::Type>();
