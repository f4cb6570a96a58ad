#pragma once

#include "Containers/Array.h"
#include "Templates/Function.h"
#include "Templates/SharedPointer.h"

#include <atomic>

// Identifies one binding of a multicast delegate so it can be removed later.
class FDelegateHandle
{
public:
	enum EGenerateNewHandleType
	{
		GenerateNewHandle
	};

	FDelegateHandle() = default;
	explicit FDelegateHandle(EGenerateNewHandleType) : ID(NextID()) {}

	bool IsValid() const { return ID != 0; }
	void Reset() { ID = 0; }
	bool operator==(const FDelegateHandle& Other) const { return ID == Other.ID; }
	bool operator!=(const FDelegateHandle& Other) const { return ID != Other.ID; }
	friend uint32 GetTypeHash(const FDelegateHandle& Handle) { return GetTypeHash(Handle.ID); }

private:
	static uint64 NextID()
	{
		static std::atomic<uint64> Counter{0};
		return ++Counter;
	}

	uint64 ID = 0;
};

template <typename FuncType>
class TDelegate;

// A single-cast delegate. A binding to a shared object (BindSP) is weak: once the object is gone
// the delegate reports itself unbound instead of calling into freed memory.
template <typename RetType, typename... ParamTypes>
class TDelegate<RetType(ParamTypes...)>
{
public:
	TDelegate() = default;

	template <typename FunctorType>
	static TDelegate CreateLambda(FunctorType&& Functor)
	{
		TDelegate Result;
		Result.BindLambda(Forward<FunctorType>(Functor));
		return Result;
	}

	template <typename... VarTypes>
	static TDelegate CreateStatic(RetType (*Function)(ParamTypes..., VarTypes...), std::type_identity_t<VarTypes>... Vars)
	{
		TDelegate Result;
		Result.BindStatic(Function, Vars...);
		return Result;
	}

	template <typename UserClass, typename... VarTypes>
	static TDelegate CreateRaw(UserClass* Object, RetType (UserClass::*Method)(ParamTypes..., VarTypes...), std::type_identity_t<VarTypes>... Vars)
	{
		TDelegate Result;
		Result.BindRaw(Object, Method, Vars...);
		return Result;
	}

	template <typename UserClass, typename... VarTypes>
	static TDelegate CreateRaw(const UserClass* Object, RetType (UserClass::*Method)(ParamTypes..., VarTypes...) const, std::type_identity_t<VarTypes>... Vars)
	{
		TDelegate Result;
		Result.BindRaw(Object, Method, Vars...);
		return Result;
	}

	template <typename UserClass, typename MethodType, typename... VarTypes>
	static TDelegate CreateSP(const TSharedRef<UserClass>& Object, MethodType Method, VarTypes... Vars)
	{
		TDelegate Result;
		Result.BindSP(Object, Method, Vars...);
		return Result;
	}

	template <typename UserClass, typename MethodType, typename... VarTypes>
	static TDelegate CreateSP(const TSharedPtr<UserClass>& Object, MethodType Method, VarTypes... Vars)
	{
		TDelegate Result;
		Result.BindSP(Object.ToSharedRef(), Method, Vars...);
		return Result;
	}

	template <typename FunctorType>
	void BindLambda(FunctorType&& Functor)
	{
		Callable = Forward<FunctorType>(Functor);
		IsAlive = nullptr;
	}

	template <typename... VarTypes>
	void BindStatic(RetType (*Function)(ParamTypes..., VarTypes...), std::type_identity_t<VarTypes>... Vars)
	{
		Callable = [Function, Vars...](ParamTypes... Params) -> RetType { return Function(Forward<ParamTypes>(Params)..., Vars...); };
		IsAlive = nullptr;
	}

	template <typename UserClass, typename MethodType, typename... VarTypes>
	void BindRaw(UserClass* Object, MethodType Method, VarTypes... Vars)
	{
		Callable = [Object, Method, Vars...](ParamTypes... Params) -> RetType { return (Object->*Method)(Forward<ParamTypes>(Params)..., Vars...); };
		IsAlive = nullptr;
	}

	template <typename UserClass, typename MethodType, typename... VarTypes>
	void BindSP(const TSharedRef<UserClass>& Object, MethodType Method, VarTypes... Vars)
	{
		TWeakPtr<UserClass> Weak(Object);
		Callable = [Weak, Method, Vars...](ParamTypes... Params) -> RetType {
			TSharedPtr<UserClass> Pinned = Weak.Pin();
			return ((*Pinned).*Method)(Forward<ParamTypes>(Params)..., Vars...);
		};
		IsAlive = [Weak]() { return Weak.IsValid(); };
	}

	template <typename UserClass, typename MethodType, typename... VarTypes>
	void BindSP(const TSharedPtr<UserClass>& Object, MethodType Method, VarTypes... Vars)
	{
		BindSP(Object.ToSharedRef(), Method, Vars...);
	}

	// Binds a function with a liveness test, for object kinds that know when they are destroyed.
	template <typename FunctorType, typename AliveType>
	void BindWeakLambda(AliveType&& InIsAlive, FunctorType&& Functor)
	{
		Callable = Forward<FunctorType>(Functor);
		IsAlive = Forward<AliveType>(InIsAlive);
	}

	bool IsBound() const { return Callable.IsSet() && (!IsAlive.IsSet() || IsAlive()); }
	void Unbind()
	{
		Callable.Reset();
		IsAlive.Reset();
	}

	RetType Execute(ParamTypes... Params) const
	{
		check(IsBound());
		return Callable(Forward<ParamTypes>(Params)...);
	}

	// Only meaningful for delegates that return nothing, as in the engine.
	bool ExecuteIfBound(ParamTypes... Params) const
	{
		static_assert(std::is_void_v<RetType>, "ExecuteIfBound is only for delegates without a return value");
		if (!IsBound())
		{
			return false;
		}
		Callable(Forward<ParamTypes>(Params)...);
		return true;
	}

private:
	TFunction<RetType(ParamTypes...)> Callable;
	TFunction<bool()> IsAlive;
};

template <typename FuncType>
class TMulticastDelegate;

// Calls every binding in the order they were added.
template <typename... ParamTypes>
class TMulticastDelegate<void(ParamTypes...)>
{
public:
	using FDelegate = TDelegate<void(ParamTypes...)>;

	FDelegateHandle Add(FDelegate Delegate)
	{
		FDelegateHandle Handle(FDelegateHandle::GenerateNewHandle);
		Bindings.Add({Handle, MoveTemp(Delegate)});
		return Handle;
	}

	template <typename FunctorType>
	FDelegateHandle AddLambda(FunctorType&& Functor)
	{
		return Add(FDelegate::CreateLambda(Forward<FunctorType>(Functor)));
	}

	template <typename... VarTypes>
	FDelegateHandle AddStatic(void (*Function)(ParamTypes..., VarTypes...), std::type_identity_t<VarTypes>... Vars)
	{
		return Add(FDelegate::CreateStatic(Function, Vars...));
	}

	template <typename UserClass, typename MethodType, typename... VarTypes>
	FDelegateHandle AddRaw(UserClass* Object, MethodType Method, VarTypes... Vars)
	{
		FDelegate Delegate;
		Delegate.BindRaw(Object, Method, Vars...);
		return Add(MoveTemp(Delegate));
	}

	template <typename UserClass, typename MethodType, typename... VarTypes>
	FDelegateHandle AddSP(const TSharedRef<UserClass>& Object, MethodType Method, VarTypes... Vars)
	{
		FDelegate Delegate;
		Delegate.BindSP(Object, Method, Vars...);
		return Add(MoveTemp(Delegate));
	}

	bool Remove(FDelegateHandle Handle)
	{
		return Bindings.RemoveAll([Handle](const FBinding& Binding) { return Binding.Handle == Handle; }) > 0;
	}

	void Clear() { Bindings.Empty(); }
	bool IsBound() const { return Bindings.ContainsByPredicate([](const FBinding& Binding) { return Binding.Delegate.IsBound(); }); }

	void Broadcast(ParamTypes... Params) const
	{
		// A copy, so a binding may add or remove bindings while being called.
		const TArray<FBinding> Snapshot = Bindings;
		for (const FBinding& Binding : Snapshot)
		{
			Binding.Delegate.ExecuteIfBound(Params...);
		}
	}

private:
	struct FBinding
	{
		FDelegateHandle Handle;
		FDelegate Delegate;
	};

	TArray<FBinding> Bindings;
};

#define DECLARE_DELEGATE(DelegateName) using DelegateName = TDelegate<void()>
#define DECLARE_DELEGATE_OneParam(DelegateName, P1) using DelegateName = TDelegate<void(P1)>
#define DECLARE_DELEGATE_TwoParams(DelegateName, P1, P2) using DelegateName = TDelegate<void(P1, P2)>
#define DECLARE_DELEGATE_ThreeParams(DelegateName, P1, P2, P3) using DelegateName = TDelegate<void(P1, P2, P3)>
#define DECLARE_DELEGATE_FourParams(DelegateName, P1, P2, P3, P4) using DelegateName = TDelegate<void(P1, P2, P3, P4)>
#define DECLARE_DELEGATE_RetVal(Ret, DelegateName) using DelegateName = TDelegate<Ret()>
#define DECLARE_DELEGATE_RetVal_OneParam(Ret, DelegateName, P1) using DelegateName = TDelegate<Ret(P1)>
#define DECLARE_DELEGATE_RetVal_TwoParams(Ret, DelegateName, P1, P2) using DelegateName = TDelegate<Ret(P1, P2)>
#define DECLARE_DELEGATE_RetVal_ThreeParams(Ret, DelegateName, P1, P2, P3) using DelegateName = TDelegate<Ret(P1, P2, P3)>
#define DECLARE_MULTICAST_DELEGATE(DelegateName) using DelegateName = TMulticastDelegate<void()>
#define DECLARE_MULTICAST_DELEGATE_OneParam(DelegateName, P1) using DelegateName = TMulticastDelegate<void(P1)>
#define DECLARE_MULTICAST_DELEGATE_TwoParams(DelegateName, P1, P2) using DelegateName = TMulticastDelegate<void(P1, P2)>
#define DECLARE_MULTICAST_DELEGATE_ThreeParams(DelegateName, P1, P2, P3) using DelegateName = TMulticastDelegate<void(P1, P2, P3)>
