#pragma once

#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"

#include <memory>
#include <type_traits>

// The engine's shared pointers, carried by std::shared_ptr: the same ownership rules
// (TSharedRef is never null, TWeakPtr pins), and make-shared allocates object and count together.
enum class ESPMode : uint8
{
	NotThreadSafe = 0,
	ThreadSafe = 1
};

template <class ObjectType, ESPMode Mode = ESPMode::ThreadSafe>
class TSharedRef;
template <class ObjectType, ESPMode Mode = ESPMode::ThreadSafe>
class TSharedPtr;
template <class ObjectType, ESPMode Mode = ESPMode::ThreadSafe>
class TWeakPtr;
template <class ObjectType, ESPMode Mode = ESPMode::ThreadSafe>
class TSharedFromThis;

namespace UE::Core::Private
{
	// What MakeShareable returns: a raw pointer (and deleter) waiting to be adopted by a shared pointer.
	template <class ObjectType>
	struct TRawPtrProxy
	{
		ObjectType* Object;
		std::shared_ptr<ObjectType> Owner;
	};

	[[noreturn]] CORE_API void OnNullSharedReference();
}

template <class ObjectType>
UE::Core::Private::TRawPtrProxy<ObjectType> MakeShareable(ObjectType* Object)
{
	return {Object, std::shared_ptr<ObjectType>(Object)};
}

template <class ObjectType, class DeleterType>
UE::Core::Private::TRawPtrProxy<ObjectType> MakeShareable(ObjectType* Object, DeleterType&& Deleter)
{
	return {Object, std::shared_ptr<ObjectType>(Object, Forward<DeleterType>(Deleter))};
}

template <class ObjectType, ESPMode Mode>
class TSharedRef
{
public:
	using ElementType = ObjectType;

	template <class OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
	explicit TSharedRef(OtherType* InObject)
		: Ptr(InObject)
	{
		CheckNotNull();
	}

	template <class OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
	TSharedRef(const UE::Core::Private::TRawPtrProxy<OtherType>& Proxy)
		: Ptr(Proxy.Owner)
	{
		CheckNotNull();
	}

	template <class OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
	TSharedRef(const TSharedRef<OtherType, Mode>& Other)
		: Ptr(Other.Ptr)
	{
	}

	TSharedRef(const TSharedRef&) = default;
	TSharedRef& operator=(const TSharedRef&) = default;
	// A moved-from shared reference stays valid, as the engine's does: moving copies.
	TSharedRef(TSharedRef&& Other) noexcept : Ptr(Other.Ptr) {}
	TSharedRef& operator=(TSharedRef&& Other) noexcept
	{
		Ptr = Other.Ptr;
		return *this;
	}

	ObjectType& Get() const { return *Ptr; }
	ObjectType& operator*() const { return *Ptr; }
	ObjectType* operator->() const { return Ptr.get(); }
	bool IsValid() const { return true; }
	int32 GetSharedReferenceCount() const { return static_cast<int32>(Ptr.use_count()); }
	bool IsUnique() const { return Ptr.use_count() == 1; }
	TSharedPtr<ObjectType, Mode> ToSharedPtr() const { return TSharedPtr<ObjectType, Mode>(*this); }
	TWeakPtr<ObjectType, Mode> ToWeakPtr() const { return TWeakPtr<ObjectType, Mode>(*this); }

	template <class OtherType>
	bool operator==(const TSharedRef<OtherType, Mode>& Other) const { return Ptr.get() == Other.Ptr.get(); }
	template <class OtherType>
	bool operator!=(const TSharedRef<OtherType, Mode>& Other) const { return Ptr.get() != Other.Ptr.get(); }

	friend uint32 GetTypeHash(const TSharedRef& Ref) { return PointerHash(Ref.Ptr.get()); }

	// Headless bridge to the carrier; engine code never needs it.
	const std::shared_ptr<ObjectType>& GetStdPtr() const { return Ptr; }
	static TSharedRef FromStdPtr(std::shared_ptr<ObjectType> InPtr) { return TSharedRef(MoveTemp(InPtr), 0); }

private:
	template <class, ESPMode> friend class TSharedRef;
	template <class, ESPMode> friend class TSharedPtr;
	template <class, ESPMode> friend class TWeakPtr;
	template <class, ESPMode> friend class TSharedFromThis;

	TSharedRef(std::shared_ptr<ObjectType> InPtr, int)
		: Ptr(MoveTemp(InPtr))
	{
		CheckNotNull();
	}

	void CheckNotNull() const
	{
		if (!Ptr)
		{
			UE::Core::Private::OnNullSharedReference();
		}
	}

	std::shared_ptr<ObjectType> Ptr;
};

template <class ObjectType, ESPMode Mode>
class TSharedPtr
{
public:
	using ElementType = ObjectType;

	TSharedPtr() = default;
	TSharedPtr(std::nullptr_t) {}

	template <class OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
	explicit TSharedPtr(OtherType* InObject)
		: Ptr(InObject)
	{
	}

	template <class OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
	TSharedPtr(const UE::Core::Private::TRawPtrProxy<OtherType>& Proxy)
		: Ptr(Proxy.Owner)
	{
	}

	template <class OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
	TSharedPtr(const TSharedPtr<OtherType, Mode>& Other)
		: Ptr(Other.Ptr)
	{
	}

	template <class OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
	TSharedPtr(TSharedPtr<OtherType, Mode>&& Other)
		: Ptr(MoveTemp(Other.Ptr))
	{
	}

	template <class OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
	TSharedPtr(const TSharedRef<OtherType, Mode>& Other)
		: Ptr(Other.Ptr)
	{
	}

	TSharedPtr(const TSharedPtr&) = default;
	TSharedPtr(TSharedPtr&&) noexcept = default;
	TSharedPtr& operator=(const TSharedPtr&) = default;
	TSharedPtr& operator=(TSharedPtr&&) noexcept = default;

	TSharedPtr& operator=(std::nullptr_t)
	{
		Ptr.reset();
		return *this;
	}

	ObjectType* Get() const { return Ptr.get(); }
	ObjectType& operator*() const
	{
		check(Ptr);
		return *Ptr;
	}
	ObjectType* operator->() const
	{
		check(Ptr);
		return Ptr.get();
	}
	bool IsValid() const { return Ptr != nullptr; }
	explicit operator bool() const { return Ptr != nullptr; }
	void Reset() { Ptr.reset(); }
	int32 GetSharedReferenceCount() const { return static_cast<int32>(Ptr.use_count()); }
	bool IsUnique() const { return Ptr.use_count() == 1; }

	TSharedRef<ObjectType, Mode> ToSharedRef() const
	{
		check(Ptr);
		return TSharedRef<ObjectType, Mode>(Ptr, 0);
	}

	TWeakPtr<ObjectType, Mode> ToWeakPtr() const { return TWeakPtr<ObjectType, Mode>(*this); }

	template <class OtherType>
	bool operator==(const TSharedPtr<OtherType, Mode>& Other) const { return Ptr.get() == Other.Ptr.get(); }
	template <class OtherType>
	bool operator!=(const TSharedPtr<OtherType, Mode>& Other) const { return Ptr.get() != Other.Ptr.get(); }
	template <class OtherType>
	bool operator==(const TSharedRef<OtherType, Mode>& Other) const { return Ptr.get() == Other.Ptr.get(); }
	bool operator==(std::nullptr_t) const { return Ptr == nullptr; }
	bool operator!=(std::nullptr_t) const { return Ptr != nullptr; }

	friend uint32 GetTypeHash(const TSharedPtr& SharedPtr) { return PointerHash(SharedPtr.Ptr.get()); }

	// Headless bridge to the carrier; engine code never needs it.
	const std::shared_ptr<ObjectType>& GetStdPtr() const { return Ptr; }
	static TSharedPtr FromStdPtr(std::shared_ptr<ObjectType> InPtr)
	{
		TSharedPtr Result;
		Result.Ptr = MoveTemp(InPtr);
		return Result;
	}

private:
	template <class, ESPMode> friend class TSharedRef;
	template <class, ESPMode> friend class TSharedPtr;
	template <class, ESPMode> friend class TWeakPtr;

	std::shared_ptr<ObjectType> Ptr;
};

template <class ObjectType, ESPMode Mode>
class TWeakPtr
{
public:
	TWeakPtr() = default;
	TWeakPtr(std::nullptr_t) {}

	template <class OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
	TWeakPtr(const TSharedPtr<OtherType, Mode>& Shared)
		: Ptr(Shared.Ptr)
	{
	}

	template <class OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
	TWeakPtr(const TSharedRef<OtherType, Mode>& Shared)
		: Ptr(Shared.Ptr)
	{
	}

	template <class OtherType, typename = std::enable_if_t<std::is_convertible_v<OtherType*, ObjectType*>>>
	TWeakPtr(const TWeakPtr<OtherType, Mode>& Other)
		: Ptr(Other.Ptr)
	{
	}

	TSharedPtr<ObjectType, Mode> Pin() const { return TSharedPtr<ObjectType, Mode>::FromStdPtr(Ptr.lock()); }
	bool IsValid() const { return !Ptr.expired(); }
	void Reset() { Ptr.reset(); }
	bool HasSameObject(const void* Other) const { return Pin().Get() == Other; }

	template <class OtherType>
	bool operator==(const TWeakPtr<OtherType, Mode>& Other) const
	{
		return !Ptr.owner_before(Other.Ptr) && !Other.Ptr.owner_before(Ptr);
	}

private:
	template <class, ESPMode> friend class TWeakPtr;
	template <class, ESPMode> friend class TSharedFromThis;

	std::weak_ptr<ObjectType> Ptr;
};

// Lets an object hand out shared references to itself once it is owned by one.
template <class ObjectType, ESPMode Mode>
class TSharedFromThis : public std::enable_shared_from_this<ObjectType>
{
public:
	TSharedRef<ObjectType, Mode> AsShared()
	{
		return TSharedRef<ObjectType, Mode>(this->shared_from_this(), 0);
	}

	TSharedRef<const ObjectType, Mode> AsShared() const
	{
		return TSharedRef<const ObjectType, Mode>(std::shared_ptr<const ObjectType>(this->shared_from_this()), 0);
	}

	TWeakPtr<ObjectType, Mode> AsWeak()
	{
		TWeakPtr<ObjectType, Mode> Result;
		Result.Ptr = this->weak_from_this();
		return Result;
	}

	bool DoesSharedInstanceExist() const { return !this->weak_from_this().expired(); }

protected:
	template <class OtherType>
	static TSharedRef<OtherType, Mode> SharedThis(OtherType* This)
	{
		return TSharedRef<OtherType, Mode>(std::static_pointer_cast<OtherType>(This->shared_from_this()), 0);
	}

	template <class OtherType>
	static TSharedRef<const OtherType, Mode> SharedThis(const OtherType* This)
	{
		return TSharedRef<const OtherType, Mode>(std::static_pointer_cast<const OtherType>(This->shared_from_this()), 0);
	}
};

template <class ObjectType, ESPMode Mode = ESPMode::ThreadSafe, typename... ArgTypes>
TSharedRef<ObjectType, Mode> MakeShared(ArgTypes&&... Args)
{
	return TSharedRef<ObjectType, Mode>::FromStdPtr(std::make_shared<ObjectType>(Forward<ArgTypes>(Args)...));
}

template <class CastToType, class CastFromType, ESPMode Mode>
TSharedPtr<CastToType, Mode> StaticCastSharedPtr(const TSharedPtr<CastFromType, Mode>& InPtr)
{
	return TSharedPtr<CastToType, Mode>::FromStdPtr(std::static_pointer_cast<CastToType>(InPtr.GetStdPtr()));
}

template <class CastToType, class CastFromType, ESPMode Mode>
TSharedRef<CastToType, Mode> StaticCastSharedRef(const TSharedRef<CastFromType, Mode>& InRef)
{
	return TSharedRef<CastToType, Mode>::FromStdPtr(std::static_pointer_cast<CastToType>(InRef.GetStdPtr()));
}

template <class CastToType, class CastFromType, ESPMode Mode>
TSharedPtr<CastToType, Mode> ConstCastSharedPtr(const TSharedPtr<CastFromType, Mode>& InPtr)
{
	return TSharedPtr<CastToType, Mode>::FromStdPtr(std::const_pointer_cast<CastToType>(InPtr.GetStdPtr()));
}

template <class CastToType, class CastFromType, ESPMode Mode>
TSharedRef<CastToType, Mode> ConstCastSharedRef(const TSharedRef<CastFromType, Mode>& InRef)
{
	return TSharedRef<CastToType, Mode>::FromStdPtr(std::const_pointer_cast<CastToType>(InRef.GetStdPtr()));
}
