#pragma once

#include "Templates/UnrealTemplate.h"

#include <functional>
#include <type_traits>

template <typename FuncType>
class TFunction;
template <typename FuncType>
class TUniqueFunction;
template <typename FuncType>
class TFunctionRef;

// Copyable type-erased callable. Calling an unset TFunction is a programming error.
template <typename Ret, typename... ParamTypes>
class TFunction<Ret(ParamTypes...)>
{
public:
	TFunction() = default;
	TFunction(std::nullptr_t) {}

	template <typename FunctorType,
		typename = std::enable_if_t<!std::is_same_v<std::decay_t<FunctorType>, TFunction> && std::is_invocable_r_v<Ret, FunctorType&, ParamTypes...>>>
	TFunction(FunctorType&& Functor)
		: Callable(Forward<FunctorType>(Functor))
	{
	}

	Ret operator()(ParamTypes... Params) const
	{
		check(Callable);
		return Callable(Forward<ParamTypes>(Params)...);
	}

	bool IsSet() const { return static_cast<bool>(Callable); }
	explicit operator bool() const { return static_cast<bool>(Callable); }
	void Reset() { Callable = nullptr; }

private:
	std::function<Ret(ParamTypes...)> Callable;
};

// Move-only callable; accepts lambdas that capture move-only state.
template <typename Ret, typename... ParamTypes>
class TUniqueFunction<Ret(ParamTypes...)>
{
	struct ICallable
	{
		virtual ~ICallable() = default;
		virtual Ret Call(ParamTypes&&... Params) = 0;
	};

	template <typename FunctorType>
	struct TCallable final : ICallable
	{
		explicit TCallable(FunctorType&& InFunctor) : Functor(MoveTemp(InFunctor)) {}
		explicit TCallable(const FunctorType& InFunctor) : Functor(InFunctor) {}
		Ret Call(ParamTypes&&... Params) override { return Functor(Forward<ParamTypes>(Params)...); }
		FunctorType Functor;
	};

public:
	TUniqueFunction() = default;
	TUniqueFunction(std::nullptr_t) {}

	template <typename FunctorType,
		typename = std::enable_if_t<!std::is_same_v<std::decay_t<FunctorType>, TUniqueFunction> && std::is_invocable_r_v<Ret, std::decay_t<FunctorType>&, ParamTypes...>>>
	TUniqueFunction(FunctorType&& Functor)
		: Callable(new TCallable<std::decay_t<FunctorType>>(Forward<FunctorType>(Functor)))
	{
	}

	TUniqueFunction(TUniqueFunction&& Other) noexcept : Callable(Other.Callable) { Other.Callable = nullptr; }
	TUniqueFunction& operator=(TUniqueFunction&& Other) noexcept
	{
		if (this != &Other)
		{
			delete Callable;
			Callable = Other.Callable;
			Other.Callable = nullptr;
		}
		return *this;
	}
	TUniqueFunction(const TUniqueFunction&) = delete;
	TUniqueFunction& operator=(const TUniqueFunction&) = delete;
	~TUniqueFunction() { delete Callable; }

	Ret operator()(ParamTypes... Params) const
	{
		check(Callable);
		return Callable->Call(Forward<ParamTypes>(Params)...);
	}

	bool IsSet() const { return Callable != nullptr; }
	explicit operator bool() const { return Callable != nullptr; }
	void Reset()
	{
		delete Callable;
		Callable = nullptr;
	}

private:
	ICallable* Callable = nullptr;
};

// Non-owning reference to a callable that outlives the call it is passed to.
template <typename Ret, typename... ParamTypes>
class TFunctionRef<Ret(ParamTypes...)>
{
public:
	template <typename FunctorType,
		typename = std::enable_if_t<!std::is_same_v<std::decay_t<FunctorType>, TFunctionRef> && std::is_invocable_r_v<Ret, FunctorType&, ParamTypes...>>>
	TFunctionRef(FunctorType&& Functor)
		: Object(const_cast<void*>(static_cast<const void*>(&Functor)))
		, Invoker([](void* Obj, ParamTypes&&... Params) -> Ret { return (*static_cast<std::remove_reference_t<FunctorType>*>(Obj))(Forward<ParamTypes>(Params)...); })
	{
	}

	Ret operator()(ParamTypes... Params) const { return Invoker(Object, Forward<ParamTypes>(Params)...); }

private:
	void* Object;
	Ret (*Invoker)(void*, ParamTypes&&...);
};
