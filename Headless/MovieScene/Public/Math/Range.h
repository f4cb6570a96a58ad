#pragma once

#include "CoreMinimal.h"
#include "Containers/EnumAsByte.h"

namespace ERangeBoundTypes
{
	enum Type : uint8
	{
		Exclusive,
		Inclusive,
		Open,
	};
}

/** One end of a range: a value that is in it or just outside it, or no end at all. */
template <typename ElementType>
class TRangeBound
{
public:
	/** An open bound: the range goes on without end on this side. */
	TRangeBound() = default;
	/** An inclusive bound at Value. */
	TRangeBound(const ElementType& InValue) : Type(ERangeBoundTypes::Inclusive), Value(InValue) {}

	static TRangeBound Exclusive(const ElementType& InValue)
	{
		TRangeBound Bound(InValue);
		Bound.Type = ERangeBoundTypes::Exclusive;
		return Bound;
	}
	static TRangeBound Inclusive(const ElementType& InValue) { return TRangeBound(InValue); }
	static TRangeBound Open() { return TRangeBound(); }

	const ElementType& GetValue() const { return Value; }
	bool IsClosed() const { return Type != ERangeBoundTypes::Open; }
	bool IsExclusive() const { return Type == ERangeBoundTypes::Exclusive; }
	bool IsInclusive() const { return Type == ERangeBoundTypes::Inclusive; }
	bool IsOpen() const { return Type == ERangeBoundTypes::Open; }

	bool operator==(const TRangeBound& Other) const { return Type == Other.Type && (IsOpen() || Value == Other.Value); }
	bool operator!=(const TRangeBound& Other) const { return !(*this == Other); }

	// Laid out as the reflected range bound structs describe it: the kind, then the value.
	TEnumAsByte<ERangeBoundTypes::Type> Type = ERangeBoundTypes::Open;
	ElementType Value = ElementType();
};

/** The values between a lower and an upper bound; by default from an inclusive lower to an exclusive upper end. */
template <typename ElementType>
class TRange
{
public:
	using BoundsType = TRangeBound<ElementType>;

	/** The empty range. */
	TRange() : LowerBound(BoundsType::Exclusive(ElementType())), UpperBound(BoundsType::Exclusive(ElementType())) {}
	/** The range holding only Value. */
	explicit TRange(const ElementType& Value) : LowerBound(BoundsType::Inclusive(Value)), UpperBound(BoundsType::Inclusive(Value)) {}
	/** [Lower, Upper). */
	TRange(const ElementType& Lower, const ElementType& Upper) : LowerBound(BoundsType::Inclusive(Lower)), UpperBound(BoundsType::Exclusive(Upper)) {}
	TRange(const BoundsType& Lower, const BoundsType& Upper) : LowerBound(Lower), UpperBound(Upper) {}

	static TRange Empty() { return TRange(); }
	static TRange All() { return TRange(BoundsType::Open(), BoundsType::Open()); }

	const BoundsType& GetLowerBound() const { return LowerBound; }
	const BoundsType& GetUpperBound() const { return UpperBound; }
	const ElementType& GetLowerBoundValue() const { return LowerBound.GetValue(); }
	const ElementType& GetUpperBoundValue() const { return UpperBound.GetValue(); }
	bool HasLowerBound() const { return LowerBound.IsClosed(); }
	bool HasUpperBound() const { return UpperBound.IsClosed(); }

	bool IsEmpty() const
	{
		if (LowerBound.IsOpen() || UpperBound.IsOpen())
		{
			return false;
		}
		if (LowerBound.GetValue() < UpperBound.GetValue())
		{
			return false;
		}
		return !(LowerBound.GetValue() == UpperBound.GetValue() && LowerBound.IsInclusive() && UpperBound.IsInclusive());
	}

	bool Contains(const ElementType& Element) const
	{
		const bool bAboveLower = LowerBound.IsOpen() || (LowerBound.IsInclusive() ? !(Element < LowerBound.GetValue()) : LowerBound.GetValue() < Element);
		const bool bBelowUpper = UpperBound.IsOpen() || (UpperBound.IsInclusive() ? !(UpperBound.GetValue() < Element) : Element < UpperBound.GetValue());
		return bAboveLower && bBelowUpper;
	}

	bool operator==(const TRange& Other) const { return LowerBound == Other.LowerBound && UpperBound == Other.UpperBound; }
	bool operator!=(const TRange& Other) const { return !(*this == Other); }

	BoundsType LowerBound;
	BoundsType UpperBound;
};
