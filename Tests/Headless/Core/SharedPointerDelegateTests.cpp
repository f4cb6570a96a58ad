#include "Delegates/Delegate.h"
#include "Templates/Function.h"
#include "Templates/SharedPointer.h"
#include "Templates/UniquePtr.h"

#include <gtest/gtest.h>

namespace
{
	struct FBase : TSharedFromThis<FBase>
	{
		virtual ~FBase() = default;
		virtual int32 Kind() const { return 0; }
	};

	struct FDerived : FBase
	{
		explicit FDerived(int32 InValue) : Value(InValue) {}
		int32 Kind() const override { return 1; }
		TSharedRef<FDerived> Self() { return SharedThis(this); }
		int32 Value;
	};

	struct FCounter
	{
		int32 Calls = 0;
		void Bump(int32 By) { Calls += By; }
		int32 Get() const { return Calls; }
	};
}

TEST(SharedPointerTest, OwnershipCastsAndWeakPins)
{
	TSharedPtr<FBase> Base;
	EXPECT_FALSE(Base.IsValid());
	{
		TSharedRef<FDerived> Derived = MakeShared<FDerived>(7);
		Base = Derived;
		EXPECT_EQ(Base.GetSharedReferenceCount(), 2);
		EXPECT_EQ(Base->Kind(), 1);
		EXPECT_EQ(StaticCastSharedPtr<FDerived>(Base)->Value, 7);
		EXPECT_TRUE(Derived->Self() == Derived);
		EXPECT_TRUE(Base->AsShared() == Base.ToSharedRef());
	}
	EXPECT_TRUE(Base.IsUnique());

	TWeakPtr<FBase> Weak = Base;
	EXPECT_TRUE(Weak.Pin().IsValid());
	Base.Reset();
	EXPECT_FALSE(Weak.IsValid());
	EXPECT_FALSE(Weak.Pin().IsValid());
}

TEST(SharedPointerTest, MakeShareableAdoptsARawPointerWithItsDeleter)
{
	int32 Deleted = 0;
	{
		TSharedPtr<int32> Adopted = MakeShareable(new int32(5), [&Deleted](int32* Ptr) { ++Deleted; delete Ptr; });
		TSharedPtr<int32> Copy = Adopted;
		EXPECT_EQ(*Copy, 5);
	}
	EXPECT_EQ(Deleted, 1);
}

TEST(SharedPointerTest, SharedRefFromNullStopsTheProcess)
{
	EXPECT_DEATH({ TSharedRef<int32> Ref(static_cast<int32*>(nullptr)); }, "null pointer");
}

TEST(FunctionTest, UniqueFunctionHoldsMoveOnlyState)
{
	TUniquePtr<int32> Owned = MakeUnique<int32>(41);
	TUniqueFunction<int32()> Function = [Owned = MoveTemp(Owned)]() { return *Owned + 1; };
	TUniqueFunction<int32()> Moved = MoveTemp(Function);
	EXPECT_FALSE(Function.IsSet());
	EXPECT_EQ(Moved(), 42);

	int32 Captured = 3;
	auto Twice = [&Captured](int32 Factor) { return Captured * Factor; };
	TFunctionRef<int32(int32)> Ref = Twice;
	EXPECT_EQ(Ref(2), 6);
}

TEST(DelegateTest, BindingsExecuteAndReportBoundState)
{
	FCounter Counter;
	TDelegate<void(int32)> Delegate;
	EXPECT_FALSE(Delegate.ExecuteIfBound(1));

	Delegate.BindRaw(&Counter, &FCounter::Bump);
	EXPECT_TRUE(Delegate.ExecuteIfBound(2));
	Delegate.Execute(3);
	EXPECT_EQ(Counter.Calls, 5);

	auto WithPayload = TDelegate<void(int32)>::CreateLambda([&Counter](int32 By) { Counter.Bump(By * 10); });
	WithPayload.Execute(1);
	EXPECT_EQ(Counter.Calls, 15);

	DECLARE_DELEGATE_RetVal(int32, FGetter);
	FGetter Getter = FGetter::CreateRaw(&Counter, &FCounter::Get);
	EXPECT_EQ(Getter.Execute(), 15);
}

TEST(DelegateTest, SharedPointerBindingIsWeak)
{
	TDelegate<void(int32)> Delegate;
	{
		TSharedRef<FCounter> Counter = MakeShared<FCounter>();
		Delegate.BindSP(Counter, &FCounter::Bump);
		EXPECT_TRUE(Delegate.ExecuteIfBound(4));
		EXPECT_EQ(Counter->Calls, 4);
	}
	EXPECT_FALSE(Delegate.IsBound());
	EXPECT_FALSE(Delegate.ExecuteIfBound(4));
}

TEST(DelegateTest, MulticastBroadcastsInOrderAndRemovesByHandle)
{
	DECLARE_MULTICAST_DELEGATE_OneParam(FOnValue, int32);
	FOnValue OnValue;
	TArray<int32> Seen;
	const FDelegateHandle First = OnValue.AddLambda([&Seen](int32 Value) { Seen.Add(Value); });
	OnValue.AddLambda([&Seen](int32 Value) { Seen.Add(Value * 100); });
	OnValue.Broadcast(2);
	EXPECT_TRUE(OnValue.Remove(First));
	EXPECT_FALSE(OnValue.Remove(First));
	OnValue.Broadcast(3);
	EXPECT_EQ(Seen, (TArray<int32>{2, 200, 300}));
}
