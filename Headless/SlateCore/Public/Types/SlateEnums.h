#pragma once

#include "CoreMinimal.h"
#include "UObject/Class.h"

/** Where a child sits across the width of its slot. */
enum EHorizontalAlignment : int
{
	HAlign_Fill,
	HAlign_Left,
	HAlign_Center,
	HAlign_Right,
};

/** Where a child sits across the height of its slot. */
enum EVerticalAlignment : int
{
	VAlign_Fill,
	VAlign_Top,
	VAlign_Center,
	VAlign_Bottom,
};

/** The axis a box, scroll box or slider runs along. */
enum EOrientation : int
{
	Orient_Horizontal,
	Orient_Vertical,
};

/** How the user finished editing a text. */
namespace ETextCommit
{
	enum Type : int
	{
		Default,
		OnEnter,
		OnUserMovedFocus,
		OnCleared,
	};
}

/** How a selection was made in a list or combo box. */
namespace ESelectInfo
{
	enum Type : int
	{
		OnKeyPress,
		OnNavigation,
		OnMouseClick,
		Direct,
	};
}

template <> UEnum* StaticEnum<EHorizontalAlignment>();
template <> UEnum* StaticEnum<EVerticalAlignment>();
template <> UEnum* StaticEnum<EOrientation>();
template <> UEnum* StaticEnum<ETextCommit::Type>();
template <> UEnum* StaticEnum<ESelectInfo::Type>();
