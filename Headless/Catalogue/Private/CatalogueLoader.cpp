#include "CatalogueLoader.h"

#include "CatalogueEmbeddedData.h"
#include "CatalogueFlags.h"

#include "UObject/Class.h"
#include "UObject/EnumProperty.h"
#include "UObject/Package.h"
#include "UObject/TextProperty.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectIterator.h"
#include "UObject/UnrealType.h"
#include "Templates/Casts.h"

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace UE::Catalogue::Private
{
	namespace
	{
		using FJson = rapidjson::Value;

		constexpr EObjectFlags GTypeObjectFlags = RF_Public | RF_Transient | RF_MarkAsNative;
		constexpr int32 GSupportedVersion = 1;

		/** One module's document; the text buffer is parsed in place, so both live together. */
		struct FModuleDocument
		{
			FString ModuleName;
			std::string Text;
			rapidjson::Document Document;
			UPackage* Package = nullptr;
		};

		bool IsAscii(const char* Text, rapidjson::SizeType Length)
		{
			for (rapidjson::SizeType Index = 0; Index < Length; ++Index)
			{
				if (static_cast<unsigned char>(Text[Index]) >= 0x80)
				{
					return false;
				}
			}
			return true;
		}

		FString ToFString(const FJson& Value)
		{
			const char* Text = Value.GetString();
			const rapidjson::SizeType Length = Value.GetStringLength();
			if (IsAscii(Text, Length))
			{
				return FString((int32)Length, Text);
			}
			return UTF8ToFString(std::string_view(Text, Length));
		}

		FName ToFName(const FJson& Value)
		{
			// Catalogue names are identifiers (ASCII); anything else still goes through FString.
			if (IsAscii(Value.GetString(), Value.GetStringLength()))
			{
				return FName(Value.GetString());
			}
			return FName(*ToFString(Value));
		}

		/** An entry being read, for error messages: "Engine.json: class Actor: function K2_GetActorLocation". */
		struct FEntryScope;

		class FCatalogueLoader
		{
		public:
			FCatalogueLoader(FCatalogueTypeRegistry& InRegistry, FCatalogueStats& InStats)
				: Registry(InRegistry), Stats(InStats)
			{
				// The engine catalogue has a few thousand distinct names; growing the table costs more than this.
				Names.reserve(8192);
			}

			bool Load(const FEmbeddedModule* Modules, int32 NumModules, FString& OutError);

		private:
			friend struct FEntryScope;

			struct FStructEntry
			{
				UScriptStruct* Struct = nullptr;
				const FJson* Json = nullptr;
				FModuleDocument* Module = nullptr;
				bool bNative = false;
				/** 0: members not added yet, 1: being added (a cycle through values), 2: linked. */
				int32 State = 0;
			};

			struct FClassEntry
			{
				UClass* Class = nullptr;
				const FJson* Json = nullptr;
				FModuleDocument* Module = nullptr;
				bool bNative = false;
			};

			// Passes, in the order Load runs them.
			bool ParseModules(const FEmbeddedModule* Modules, int32 NumModules);
			bool CreateEnums(FModuleDocument& Module);
			bool CreateStructShells(FModuleDocument& Module);
			bool CreateClassShells(FModuleDocument& Module);
			bool ResolveClassReferences(FClassEntry& Entry);
			bool LinkStruct(FStructEntry& Entry);
			bool CreateDelegates(FModuleDocument& Module);
			bool FillClass(FClassEntry& Entry);
			bool ApplyClassDefaults(FClassEntry& Entry);

			// Pieces.
			UFunction* CreateFunction(UObject* Outer, const FJson& Json, UClass* FunctionClass, bool& bOutSkipped);
			bool AddParameters(UFunction* Function, const FJson& Json, bool& bOutSkipped);
			FProperty* CreateProperty(FFieldVariant Owner, FName Name, const FJson& Json, EPropertyFlags Flags, bool& bOutSkipped);
			bool ReadFlags(const FJson& Json, EPropertyFlags& OutFlags);
			bool ApplyMetaData(UField* Field, const FJson& Json);
			bool ApplyMetaData(FField* Field, const FJson& Json);

			// Lookups and reading.
			UObject* FindType(const FJson& PathValue, UClass* ExpectedClass);
			UClass* FindClassMember(const FJson& Json, const char* Key, bool bRequired);
			const FJson* Member(const FJson& Json, const char* Key) const;
			const char* GetString(const FJson& Json, const char* Key, bool bRequired);
			const FJson* GetArray(const FJson& Json, const char* Key);
			bool Fail(const FString& Message);
			FString PathOf(const FModuleDocument& Module, const FJson& Name) const;
			void RecordType(const UField* Type, const FJson& Json);

			FCatalogueTypeRegistry& Registry;
			FCatalogueStats& Stats;
			std::vector<std::unique_ptr<FModuleDocument>> Documents;
			TArray<FStructEntry> Structs;
			TArray<FClassEntry> Classes;
			TMap<FString, UObject*> TypesByPath;
			TMap<const UScriptStruct*, int32> StructIndex;
			/** Native classes that native classes derive from: adding data properties to them would overlap C++ members. */
			TSet<const UClass*> NativeSuperClasses;
			FString Error;
			TArray<const char*> Scope;
			FString ScopeModule;
			/**
			 * Names by their text. Most names recur (ReturnValue, WorldContextObject, Category,
			 * NativeConst...), and looking one up here is much cheaper than making the FName again.
			 * The keys point into the parsed documents, which live as long as the loader.
			 */
			std::unordered_map<std::string_view, FName> Names;

		public:
			FName Intern(const FJson& Value)
			{
				const std::string_view Text(Value.GetString(), Value.GetStringLength());
				const auto Found = Names.find(Text);
				if (Found != Names.end())
				{
					return Found->second;
				}
				const FName Name = ToFName(Value);
				Names.emplace(Text, Name);
				return Name;
			}
		};

		struct FEntryScope
		{
			FEntryScope(FCatalogueLoader& InLoader, const char* Kind, const FJson* Name)
				: Loader(InLoader)
			{
				Loader.Scope.Add(Kind);
				Loader.Scope.Add(Name && Name->IsString() ? Name->GetString() : "?");
			}
			~FEntryScope()
			{
				Loader.Scope.Pop();
				Loader.Scope.Pop();
			}
			FCatalogueLoader& Loader;
		};

		bool FCatalogueLoader::Fail(const FString& Message)
		{
			if (!Error.IsEmpty())
			{
				return false;
			}
			FString Where = ScopeModule.IsEmpty() ? FString(TEXT("catalogue")) : ScopeModule + TEXT(".json");
			for (int32 Index = 0; Index + 1 < Scope.Num(); Index += 2)
			{
				Where += FString::Printf(TEXT(": %s %s"), *FString(Scope[Index]), *UTF8ToFString(Scope[Index + 1]));
			}
			Error = Where + TEXT(": ") + Message;
			return false;
		}

		const FJson* FCatalogueLoader::Member(const FJson& Json, const char* Key) const
		{
			if (!Json.IsObject())
			{
				return nullptr;
			}
			const FJson::ConstMemberIterator It = Json.FindMember(Key);
			return It == Json.MemberEnd() ? nullptr : &It->value;
		}

		const char* FCatalogueLoader::GetString(const FJson& Json, const char* Key, bool bRequired)
		{
			const FJson* Value = Member(Json, Key);
			if (!Value)
			{
				if (bRequired)
				{
					Fail(FString::Printf(TEXT("'%s' is missing"), *FString(Key)));
				}
				return nullptr;
			}
			if (!Value->IsString())
			{
				Fail(FString::Printf(TEXT("'%s' must be a string"), *FString(Key)));
				return nullptr;
			}
			return Value->GetString();
		}

		const FJson* FCatalogueLoader::GetArray(const FJson& Json, const char* Key)
		{
			const FJson* Value = Member(Json, Key);
			if (Value && !Value->IsArray())
			{
				Fail(FString::Printf(TEXT("'%s' must be an array"), *FString(Key)));
				return nullptr;
			}
			return Value;
		}

		FString FCatalogueLoader::PathOf(const FModuleDocument& Module, const FJson& Name) const
		{
			return FString::Printf(TEXT("/Script/%s.%s"), *Module.ModuleName, *ToFString(Name));
		}

		void FCatalogueLoader::RecordType(const UField* Type, const FJson& Json)
		{
			Registry.CatalogueTypes.Add(Type);
			const FJson* Minimal = Member(Json, "minimal");
			if (Minimal && Minimal->IsBool() && Minimal->GetBool())
			{
				Registry.MinimalTypes.Add(Type);
			}
		}

		UObject* FCatalogueLoader::FindType(const FJson& PathValue, UClass* ExpectedClass)
		{
			if (!PathValue.IsString())
			{
				Fail(TEXT("a type path must be a string"));
				return nullptr;
			}
			const FString Path = ToFString(PathValue);
			if (UObject* const* Found = TypesByPath.Find(Path))
			{
				if (!(*Found)->IsA(ExpectedClass))
				{
					Fail(FString::Printf(TEXT("'%s' is a %s, not a %s"), *Path, *(*Found)->GetClass()->GetName(), *ExpectedClass->GetName()));
					return nullptr;
				}
				return *Found;
			}
			// Types the catalogue does not define are C++ types of CoreUObject (Object, Vector...) or
			// types an earlier registration made.
			UObject* Native = StaticFindObject(ExpectedClass, nullptr, *Path);
			if (!Native)
			{
				if (UObject* Other = StaticFindObject(UObject::StaticClass(), nullptr, *Path))
				{
					Fail(FString::Printf(TEXT("'%s' is a %s, not a %s"), *Path, *Other->GetClass()->GetName(), *ExpectedClass->GetName()));
				}
				else
				{
					Fail(FString::Printf(TEXT("unknown %s '%s'"), *ExpectedClass->GetName(), *Path));
				}
				return nullptr;
			}
			TypesByPath.Add(Path, Native);
			return Native;
		}

		UClass* FCatalogueLoader::FindClassMember(const FJson& Json, const char* Key, bool bRequired)
		{
			const FJson* Value = Member(Json, Key);
			if (!Value)
			{
				if (bRequired)
				{
					Fail(FString::Printf(TEXT("'%s' is missing"), *FString(Key)));
				}
				return nullptr;
			}
			return (UClass*)FindType(*Value, UClass::StaticClass());
		}

		bool FCatalogueLoader::ReadFlags(const FJson& Json, EPropertyFlags& OutFlags)
		{
			OutFlags = CPF_None;
			const FJson* Flags = GetArray(Json, "flags");
			if (!Flags)
			{
				return Error.IsEmpty();
			}
			for (const FJson& Flag : Flags->GetArray())
			{
				EPropertyFlags Value;
				if (!Flag.IsString() || !FindPropertyFlag(Flag.GetString(), Value))
				{
					return Fail(FString::Printf(TEXT("unknown property flag '%s'"), Flag.IsString() ? *ToFString(Flag) : TEXT("?")));
				}
				OutFlags |= Value;
			}
			return true;
		}

		template <typename TField>
		bool ApplyMetaDataTo(FCatalogueLoader& Loader, TField* Field, const FJson* Meta, bool bKeepExisting)
		{
			if (!Meta)
			{
				return true;
			}
			if (!Meta->IsObject())
			{
				return false;
			}
			for (FJson::ConstMemberIterator It = Meta->MemberBegin(); It != Meta->MemberEnd(); ++It)
			{
				if (!It->value.IsString())
				{
					return false;
				}
				const FName Key = Loader.Intern(It->name);
				if (bKeepExisting && Field->HasMetaData(Key))
				{
					continue;
				}
				Field->SetMetaData(Key, ToFString(It->value));
			}
			return true;
		}

		bool FCatalogueLoader::ApplyMetaData(UField* Field, const FJson& Json)
		{
			// Metadata a C++ type already declares wins over the catalogue's.
			if (!ApplyMetaDataTo(*this, Field, Member(Json, "meta"), true))
			{
				return Fail(TEXT("'meta' must map names to strings"));
			}
			return true;
		}

		bool FCatalogueLoader::ApplyMetaData(FField* Field, const FJson& Json)
		{
			if (!ApplyMetaDataTo(*this, Field, Member(Json, "meta"), false))
			{
				return Fail(TEXT("'meta' must map names to strings"));
			}
			return true;
		}

		// ---- properties ----------------------------------------------------------------------

		FProperty* FCatalogueLoader::CreateProperty(FFieldVariant Owner, FName Name, const FJson& Json, EPropertyFlags Flags, bool& bOutSkipped)
		{
			const char* Kind = GetString(Json, "kind", true);
			if (!Kind)
			{
				return nullptr;
			}
			const EObjectFlags ObjectFlags = RF_Public | RF_MarkAsNative | RF_Transient;
			FProperty* Property = nullptr;
			const std::string_view K(Kind);

			if (K == "bool") { Property = new FBoolProperty(Owner, Name, ObjectFlags); }
			else if (K == "byte")
			{
				FByteProperty* Byte = new FByteProperty(Owner, Name, ObjectFlags);
				if (const FJson* EnumPath = Member(Json, "enum"))
				{
					Byte->Enum = (UEnum*)FindType(*EnumPath, UEnum::StaticClass());
					if (!Byte->Enum)
					{
						delete Byte;
						return nullptr;
					}
				}
				Property = Byte;
			}
			else if (K == "int8") { Property = new FInt8Property(Owner, Name, ObjectFlags); }
			else if (K == "int16") { Property = new FInt16Property(Owner, Name, ObjectFlags); }
			else if (K == "int") { Property = new FIntProperty(Owner, Name, ObjectFlags); }
			else if (K == "int64") { Property = new FInt64Property(Owner, Name, ObjectFlags); }
			else if (K == "uint16") { Property = new FUInt16Property(Owner, Name, ObjectFlags); }
			else if (K == "uint32") { Property = new FUInt32Property(Owner, Name, ObjectFlags); }
			else if (K == "uint64") { Property = new FUInt64Property(Owner, Name, ObjectFlags); }
			else if (K == "float") { Property = new FFloatProperty(Owner, Name, ObjectFlags); }
			else if (K == "double") { Property = new FDoubleProperty(Owner, Name, ObjectFlags); }
			else if (K == "name") { Property = new FNameProperty(Owner, Name, ObjectFlags); }
			else if (K == "string") { Property = new FStrProperty(Owner, Name, ObjectFlags); }
			else if (K == "text") { Property = new FTextProperty(Owner, Name, ObjectFlags); }
			else if (K == "object" || K == "weakobject" || K == "softobject")
			{
				UClass* Class = FindClassMember(Json, "class", true);
				if (!Class)
				{
					return nullptr;
				}
				FObjectPropertyBase* Object = nullptr;
				if (K == "object") { Object = new FObjectProperty(Owner, Name, ObjectFlags); }
				else if (K == "weakobject") { Object = new FWeakObjectProperty(Owner, Name, ObjectFlags); }
				else { Object = new FSoftObjectProperty(Owner, Name, ObjectFlags); }
				Object->SetPropertyClass(Class);
				Property = Object;
			}
			else if (K == "class")
			{
				UClass* MetaClass = FindClassMember(Json, "class", true);
				if (!MetaClass)
				{
					return nullptr;
				}
				FClassProperty* ClassProperty = new FClassProperty(Owner, Name, ObjectFlags);
				ClassProperty->SetPropertyClass(UClass::StaticClass());
				ClassProperty->SetMetaClass(MetaClass);
				Property = ClassProperty;
			}
			else if (K == "softclass")
			{
				UClass* MetaClass = FindClassMember(Json, "class", true);
				if (!MetaClass)
				{
					return nullptr;
				}
				FSoftClassProperty* ClassProperty = new FSoftClassProperty(Owner, Name, ObjectFlags);
				ClassProperty->SetPropertyClass(UClass::StaticClass());
				ClassProperty->SetMetaClass(MetaClass);
				Property = ClassProperty;
			}
			else if (K == "interface")
			{
				UClass* InterfaceClass = FindClassMember(Json, "class", true);
				if (!InterfaceClass)
				{
					return nullptr;
				}
				FInterfaceProperty* Interface = new FInterfaceProperty(Owner, Name, ObjectFlags);
				Interface->SetInterfaceClass(InterfaceClass);
				Property = Interface;
			}
			else if (K == "struct")
			{
				const FJson* StructPath = Member(Json, "struct");
				if (!StructPath)
				{
					Fail(TEXT("'struct' is missing"));
					return nullptr;
				}
				UScriptStruct* Struct = (UScriptStruct*)FindType(*StructPath, UScriptStruct::StaticClass());
				if (!Struct)
				{
					return nullptr;
				}
				// A struct held by value must be laid out before its holder.
				if (int32* Index = StructIndex.Find(Struct))
				{
					if (!LinkStruct(Structs[*Index]))
					{
						return nullptr;
					}
				}
				FStructProperty* StructProperty = new FStructProperty(Owner, Name, ObjectFlags);
				StructProperty->Struct = Struct;
				Property = StructProperty;
			}
			else if (K == "enum")
			{
				const FJson* EnumPath = Member(Json, "enum");
				const char* Underlying = GetString(Json, "underlying", true);
				if (!EnumPath || !Underlying)
				{
					if (!EnumPath)
					{
						Fail(TEXT("'enum' is missing"));
					}
					return nullptr;
				}
				UEnum* Enum = (UEnum*)FindType(*EnumPath, UEnum::StaticClass());
				if (!Enum)
				{
					return nullptr;
				}
				FEnumProperty* EnumProperty = new FEnumProperty(Owner, Name, ObjectFlags, Enum);
				const std::string_view U(Underlying);
				FProperty* UnderlyingProperty = nullptr;
				const FName UnderlyingName(TEXT("UnderlyingType"));
				if (U == "byte") { UnderlyingProperty = new FByteProperty(EnumProperty, UnderlyingName, ObjectFlags); }
				else if (U == "int8") { UnderlyingProperty = new FInt8Property(EnumProperty, UnderlyingName, ObjectFlags); }
				else if (U == "int16") { UnderlyingProperty = new FInt16Property(EnumProperty, UnderlyingName, ObjectFlags); }
				else if (U == "uint16") { UnderlyingProperty = new FUInt16Property(EnumProperty, UnderlyingName, ObjectFlags); }
				else if (U == "int") { UnderlyingProperty = new FIntProperty(EnumProperty, UnderlyingName, ObjectFlags); }
				else if (U == "uint32") { UnderlyingProperty = new FUInt32Property(EnumProperty, UnderlyingName, ObjectFlags); }
				else if (U == "int64") { UnderlyingProperty = new FInt64Property(EnumProperty, UnderlyingName, ObjectFlags); }
				else if (U == "uint64") { UnderlyingProperty = new FUInt64Property(EnumProperty, UnderlyingName, ObjectFlags); }
				else
				{
					delete EnumProperty;
					Fail(FString::Printf(TEXT("unknown underlying type '%s'"), *FString(Underlying)));
					return nullptr;
				}
				EnumProperty->AddCppProperty(UnderlyingProperty);
				Property = EnumProperty;
			}
			else if (K == "array" || K == "set")
			{
				const FJson* Inner = Member(Json, "inner");
				if (!Inner)
				{
					Fail(TEXT("'inner' is missing"));
					return nullptr;
				}
				if (K == "array")
				{
					FArrayProperty* Array = new FArrayProperty(Owner, Name, ObjectFlags);
					FProperty* Element = CreateProperty(Array, Name, *Inner, Flags & CPF_PropagateToArrayInner, bOutSkipped);
					if (!Element)
					{
						delete Array;
						return nullptr;
					}
					Array->AddCppProperty(Element);
					Property = Array;
				}
				else
				{
					FSetProperty* Set = new FSetProperty(Owner, Name, ObjectFlags);
					FProperty* Element = CreateProperty(Set, Name, *Inner, Flags & CPF_PropagateToSetElement, bOutSkipped);
					if (!Element)
					{
						delete Set;
						return nullptr;
					}
					Set->AddCppProperty(Element);
					Property = Set;
				}
			}
			else if (K == "map")
			{
				const FJson* Key = Member(Json, "key");
				const FJson* Value = Member(Json, "value");
				if (!Key || !Value)
				{
					Fail(TEXT("a map needs 'key' and 'value'"));
					return nullptr;
				}
				FMapProperty* Map = new FMapProperty(Owner, Name, ObjectFlags);
				FProperty* KeyProperty = CreateProperty(Map, FName(*(Name.ToString() + TEXT("_Key"))), *Key, Flags & CPF_PropagateToMapKey, bOutSkipped);
				FProperty* ValueProperty = KeyProperty ? CreateProperty(Map, Name, *Value, Flags & CPF_PropagateToMapValue, bOutSkipped) : nullptr;
				if (!KeyProperty || !ValueProperty)
				{
					delete KeyProperty;
					delete Map;
					return nullptr;
				}
				Map->AddCppProperty(KeyProperty);
				Map->AddCppProperty(ValueProperty);
				Property = Map;
			}
			else if (K == "delegate" || K == "mcdelegate")
			{
				const FJson* SignaturePath = Member(Json, "signature");
				if (!SignaturePath)
				{
					Fail(TEXT("'signature' is missing"));
					return nullptr;
				}
				UFunction* Signature = (UFunction*)FindType(*SignaturePath, UFunction::StaticClass());
				if (!Signature)
				{
					return nullptr;
				}
				if (K == "delegate")
				{
					FDelegateProperty* Delegate = new FDelegateProperty(Owner, Name, ObjectFlags);
					Delegate->SignatureFunction = Signature;
					Property = Delegate;
				}
				else
				{
					const FJson* Sparse = Member(Json, "sparse");
					FMulticastDelegateProperty* Delegate = nullptr;
					if (Sparse && Sparse->IsBool() && Sparse->GetBool())
					{
						Delegate = new FMulticastSparseDelegateProperty(Owner, Name, ObjectFlags);
					}
					else
					{
						Delegate = new FMulticastInlineDelegateProperty(Owner, Name, ObjectFlags);
					}
					Delegate->SignatureFunction = Signature;
					Property = Delegate;
				}
			}
			else if (K == "fieldpath")
			{
				// Made through the field class registry, so the catalogue works whether or not the
				// object system offers this kind; without it the member is left out and counted.
				FFieldClass* const* FieldClass = FFieldClass::GetNameToFieldClassMap().Find(FName(TEXT("FieldPathProperty")));
				if (!FieldClass)
				{
					bOutSkipped = true;
					return nullptr;
				}
				Property = (FProperty*)(*FieldClass)->Construct(Owner, Name, ObjectFlags);
			}
			else
			{
				Fail(FString::Printf(TEXT("unknown property kind '%s'"), *FString(Kind)));
				return nullptr;
			}
			Property->SetPropertyFlags(Flags);
			return Property;
		}

		// ---- functions -----------------------------------------------------------------------

		bool FCatalogueLoader::AddParameters(UFunction* Function, const FJson& Json, bool& bOutSkipped)
		{
			const FJson* Params = GetArray(Json, "params");
			if (!Params)
			{
				return Error.IsEmpty();
			}
			const auto& Array = Params->GetArray();
			// AddCppProperty prepends: the last parameter (the return value) goes in first.
			for (rapidjson::SizeType Index = Array.Size(); Index-- > 0;)
			{
				const FJson& Param = Array[Index];
				FEntryScope ParamScope(*this, "parameter", Member(Param, "name"));
				const char* Name = GetString(Param, "name", true);
				EPropertyFlags Flags;
				if (!Name || !ReadFlags(Param, Flags))
				{
					return false;
				}
				FProperty* Property = CreateProperty(Function, Intern(*Member(Param, "name")), Param, Flags, bOutSkipped);
				if (!Property)
				{
					// A kind the object system cannot represent leaves the whole function out; the caller counts it.
					return bOutSkipped && Error.IsEmpty();
				}
				Function->AddCppProperty(Property);
				if (!ApplyMetaData(Property, Param))
				{
					return false;
				}
				++Stats.NumProperties;
			}
			return true;
		}

		UFunction* FCatalogueLoader::CreateFunction(UObject* Outer, const FJson& Json, UClass* FunctionClass, bool& bOutSkipped)
		{
			const FJson* NameValue = Member(Json, "name");
			if (!NameValue || !NameValue->IsString())
			{
				Fail(TEXT("a function needs a 'name'"));
				return nullptr;
			}
			EFunctionFlags FunctionFlags = FUNC_None;
			if (const FJson* Flags = GetArray(Json, "flags"))
			{
				for (const FJson& Flag : Flags->GetArray())
				{
					EFunctionFlags Value;
					if (!Flag.IsString() || !FindFunctionFlag(Flag.GetString(), Value))
					{
						Fail(FString::Printf(TEXT("unknown function flag '%s'"), Flag.IsString() ? *ToFString(Flag) : TEXT("?")));
						return nullptr;
					}
					FunctionFlags |= Value;
				}
			}
			else if (!Error.IsEmpty())
			{
				return nullptr;
			}
			UFunction* Function = NewObject<UFunction>(Outer, FunctionClass, Intern(*NameValue), GTypeObjectFlags);
			Function->FunctionFlags = FunctionFlags;
			bool bSkipped = false;
			if (!AddParameters(Function, Json, bSkipped))
			{
				return nullptr;
			}
			if (bSkipped)
			{
				bOutSkipped = true;
				Function->MarkAsGarbage();
				return nullptr;
			}
			if (!ApplyMetaData(Function, Json))
			{
				return nullptr;
			}
			Function->Bind();
			Function->StaticLink(true);
			return Function;
		}

		// ---- passes --------------------------------------------------------------------------

		bool FCatalogueLoader::ParseModules(const FEmbeddedModule* Modules, int32 NumModules)
		{
			for (int32 ModuleIndex = 0; ModuleIndex < NumModules; ++ModuleIndex)
			{
				const FEmbeddedModule& Embedded = Modules[ModuleIndex];
				std::unique_ptr<FModuleDocument> Module = std::make_unique<FModuleDocument>();
				Module->ModuleName = FString(Embedded.ModuleName);
				ScopeModule = Module->ModuleName;
				Module->Text.reserve((size_t)Embedded.NumBytes + 1);
				for (int32 Chunk = 0; Chunk < Embedded.NumChunks; ++Chunk)
				{
					Module->Text.append(Embedded.Chunks[Chunk]);
				}
				if ((int32)Module->Text.size() != Embedded.NumBytes)
				{
					return Fail(FString::Printf(TEXT("embedded data is %d bytes, expected %d"), (int32)Module->Text.size(), Embedded.NumBytes));
				}
				Module->Document.ParseInsitu(Module->Text.data());
				if (Module->Document.HasParseError())
				{
					return Fail(FString::Printf(TEXT("not valid JSON at byte %d: %s"), (int32)Module->Document.GetErrorOffset(),
						*FString(rapidjson::GetParseError_En(Module->Document.GetParseError()))));
				}
				const FJson& Root = Module->Document;
				const char* Format = GetString(Root, "format", true);
				const FJson* Version = Member(Root, "version");
				const char* Name = GetString(Root, "module", true);
				if (!Format || !Name)
				{
					return false;
				}
				if (std::strcmp(Format, "calvorn-catalogue") != 0)
				{
					return Fail(FString::Printf(TEXT("format '%s' is not a catalogue"), *FString(Format)));
				}
				if (!Version || !Version->IsInt() || Version->GetInt() != GSupportedVersion)
				{
					return Fail(FString::Printf(TEXT("unsupported catalogue version (this program reads version %d)"), GSupportedVersion));
				}
				if (FString(Name) != Module->ModuleName)
				{
					return Fail(FString::Printf(TEXT("holds module '%s'"), *FString(Name)));
				}
				for (const char* Section : { "enums", "structs", "delegates", "classes" })
				{
					if (!GetArray(Root, Section))
					{
						return Error.IsEmpty() ? Fail(FString::Printf(TEXT("'%s' is missing"), *FString(Section))) : false;
					}
				}
				Module->Package = CreatePackage(*(TEXT("/Script/") + Module->ModuleName));
				if (!Module->Package)
				{
					return Fail(TEXT("cannot create the module's script package"));
				}
				Module->Package->SetPackageFlags(PKG_CompiledIn);
				Documents.push_back(std::move(Module));
				++Stats.NumModules;
			}
			ScopeModule.Reset();
			return true;
		}

		bool FCatalogueLoader::CreateEnums(FModuleDocument& Module)
		{
			for (const FJson& Json : Member(Module.Document, "enums")->GetArray())
			{
				FEntryScope EntryScope(*this, "enum", Member(Json, "name"));
				const char* Name = GetString(Json, "name", true);
				const char* Form = GetString(Json, "form", true);
				const FJson* Values = GetArray(Json, "values");
				if (!Name || !Form)
				{
					return false;
				}
				if (!Values)
				{
					return Error.IsEmpty() ? Fail(TEXT("'values' is missing")) : false;
				}
				const FString Path = PathOf(Module, *Member(Json, "name"));
				UEnum* Enum = FindObject<UEnum>(nullptr, *Path);
				const bool bNative = Enum != nullptr;
				if (!Enum)
				{
					UEnum::ECppForm CppForm;
					const std::string_view F(Form);
					if (F == "Regular") { CppForm = UEnum::ECppForm::Regular; }
					else if (F == "Namespaced") { CppForm = UEnum::ECppForm::Namespaced; }
					else if (F == "EnumClass") { CppForm = UEnum::ECppForm::EnumClass; }
					else { return Fail(FString::Printf(TEXT("unknown enum form '%s'"), *FString(Form))); }

					Enum = NewObject<UEnum>(Module.Package, FName(Name), GTypeObjectFlags);
					const FString EnumName(Name);
					TArray<TPair<FName, int64>> Entries;
					Entries.Reserve((int32)Values->Size());
					for (const FJson& Value : Values->GetArray())
					{
						const FJson* ValueName = Member(Value, "name");
						const FJson* Number = Member(Value, "value");
						if (!ValueName || !ValueName->IsString() || !Number || !Number->IsInt64())
						{
							return Fail(TEXT("each value needs a 'name' and an integer 'value'"));
						}
						const FString Short = ToFString(*ValueName);
						Entries.Emplace(CppForm == UEnum::ECppForm::Regular ? FName(*Short) : FName(*(EnumName + TEXT("::") + Short)), Number->GetInt64());
					}
					if (!Enum->SetEnums(Entries, CppForm, EEnumFlags::None, true))
					{
						return Fail(TEXT("has two entries with the same name"));
					}
					Enum->CppType = CppForm == UEnum::ECppForm::Namespaced ? EnumName + TEXT("::Type") : EnumName;
					if (const FJson* Flags = Member(Json, "flags"))
					{
						if (Flags->IsArray() && !Flags->Empty())
						{
							Enum->SetEnumFlags(EEnumFlags::Flags);
						}
					}
					// Per-entry metadata ("DisplayName", "Hidden"), keyed by the entry's index.
					int32 EntryIndex = 0;
					for (const FJson& Value : Values->GetArray())
					{
						if (const FJson* Meta = Member(Value, "meta"))
						{
							if (!Meta->IsObject())
							{
								return Fail(TEXT("'meta' must map names to strings"));
							}
							for (FJson::ConstMemberIterator It = Meta->MemberBegin(); It != Meta->MemberEnd(); ++It)
							{
								if (!It->value.IsString())
								{
									return Fail(TEXT("'meta' must map names to strings"));
								}
								Enum->SetMetaData(*ToFString(It->name), *ToFString(It->value), EntryIndex);
							}
						}
						++EntryIndex;
					}
					++Stats.NumEnums;
				}
				if (const FJson* Meta = Member(Json, "meta"))
				{
					if (!Meta->IsObject())
					{
						return Fail(TEXT("'meta' must map names to strings"));
					}
					for (FJson::ConstMemberIterator It = Meta->MemberBegin(); It != Meta->MemberEnd(); ++It)
					{
						if (!It->value.IsString())
						{
							return Fail(TEXT("'meta' must map names to strings"));
						}
						const FString Key = ToFString(It->name);
						if (!bNative || !Enum->HasMetaData(*Key))
						{
							Enum->SetMetaData(*Key, *ToFString(It->value));
						}
					}
				}
				TypesByPath.Add(Path, Enum);
				if (!bNative)
				{
					RecordType(Enum, Json);
				}
			}
			return true;
		}

		bool FCatalogueLoader::CreateStructShells(FModuleDocument& Module)
		{
			for (const FJson& Json : Member(Module.Document, "structs")->GetArray())
			{
				FEntryScope EntryScope(*this, "struct", Member(Json, "name"));
				const char* Name = GetString(Json, "name", true);
				if (!Name)
				{
					return false;
				}
				const FString Path = PathOf(Module, *Member(Json, "name"));
				FStructEntry Entry;
				Entry.Json = &Json;
				Entry.Module = &Module;
				Entry.Struct = FindObject<UScriptStruct>(nullptr, *Path);
				Entry.bNative = Entry.Struct != nullptr;
				if (!Entry.Struct)
				{
					Entry.Struct = NewObject<UScriptStruct>(Module.Package, FName(Name), GTypeObjectFlags);
					++Stats.NumStructs;
				}
				TypesByPath.Add(Path, Entry.Struct);
				StructIndex.Add(Entry.Struct, Structs.Num());
				Structs.Add(Entry);
				if (!Entry.bNative)
				{
					RecordType(Entry.Struct, Json);
				}
			}
			return true;
		}

		bool FCatalogueLoader::CreateClassShells(FModuleDocument& Module)
		{
			for (const FJson& Json : Member(Module.Document, "classes")->GetArray())
			{
				FEntryScope EntryScope(*this, "class", Member(Json, "name"));
				const char* Name = GetString(Json, "name", true);
				if (!Name)
				{
					return false;
				}
				const FString Path = PathOf(Module, *Member(Json, "name"));
				FClassEntry Entry;
				Entry.Json = &Json;
				Entry.Module = &Module;
				Entry.Class = FindObject<UClass>(nullptr, *Path);
				Entry.bNative = Entry.Class != nullptr;
				const FJson* DeclaredNative = Member(Json, "native");
				if (!Entry.bNative && DeclaredNative && DeclaredNative->IsBool() && DeclaredNative->GetBool())
				{
					// Making a data class in its place would give the program two classes of that name.
					return Fail(TEXT("is a C++ class of the object system, but it is not registered"));
				}
				if (Entry.bNative)
				{
					++Stats.NumAugmentedClasses;
				}
				else
				{
					UClass* Super = FindClassMember(Json, "super", true);
					if (!Super)
					{
						return false;
					}
					EClassFlags ClassFlags = CLASS_None;
					if (const FJson* Flags = GetArray(Json, "flags"))
					{
						for (const FJson& Flag : Flags->GetArray())
						{
							EClassFlags Value;
							if (!Flag.IsString() || !FindClassFlag(Flag.GetString(), Value))
							{
								return Fail(FString::Printf(TEXT("unknown class flag '%s'"), Flag.IsString() ? *ToFString(Flag) : TEXT("?")));
							}
							ClassFlags |= Value;
						}
					}
					else if (!Error.IsEmpty())
					{
						return false;
					}
					UClass* Class = NewObject<UClass>(Module.Package, FName(Name), GTypeObjectFlags);
					Class->SetSuperStruct(Super);
					Class->ClassFlags |= ClassFlags;
					Class->ClassCastFlags |= Super->ClassCastFlags;
					const char* Config = GetString(Json, "config", false);
					Class->ClassConfigName = Config ? FName(Config) : Super->ClassConfigName;
					Entry.Class = Class;
					++Stats.NumClasses;
				}
				TypesByPath.Add(Path, Entry.Class);
				Classes.Add(Entry);
				if (!Entry.bNative)
				{
					RecordType(Entry.Class, Json);
				}
				if (!Error.IsEmpty())
				{
					return false;
				}
			}
			return true;
		}

		bool FCatalogueLoader::ResolveClassReferences(FClassEntry& Entry)
		{
			ScopeModule = Entry.Module->ModuleName;
			FEntryScope EntryScope(*this, "class", Member(*Entry.Json, "name"));
			UClass* Class = Entry.Class;
			if (!Entry.bNative)
			{
				if (Member(*Entry.Json, "within"))
				{
					Class->ClassWithin = FindClassMember(*Entry.Json, "within", true);
					if (!Class->ClassWithin)
					{
						return false;
					}
				}
			}
			if (const FJson* Interfaces = GetArray(*Entry.Json, "interfaces"))
			{
				for (const FJson& Path : Interfaces->GetArray())
				{
					UClass* Interface = (UClass*)FindType(Path, UClass::StaticClass());
					if (!Interface)
					{
						return false;
					}
					if (!Interface->HasAnyClassFlags(CLASS_Interface))
					{
						return Fail(FString::Printf(TEXT("'%s' is not an interface"), *Interface->GetPathName()));
					}
					const bool bListed = Class->Interfaces.ContainsByPredicate([Interface](const FImplementedInterface& Implemented) { return Implemented.Class == Interface; });
					if (!bListed)
					{
						Class->Interfaces.Add(FImplementedInterface(Interface, 0, false));
					}
				}
			}
			return Error.IsEmpty();
		}

		bool FCatalogueLoader::LinkStruct(FStructEntry& Entry)
		{
			if (Entry.State != 0)
			{
				// State 1: the struct holds itself by value through another struct; the data never does this.
				return Entry.State == 2 || Fail(FString::Printf(TEXT("struct %s contains itself"), *Entry.Struct->GetName()));
			}
			Entry.State = 1;
			const FString SavedModule = ScopeModule;
			const TArray<const char*> SavedScope = Scope;
			ScopeModule = Entry.Module->ModuleName;
			Scope.Reset();
			bool bOk = true;
			{
				FEntryScope EntryScope(*this, "struct", Member(*Entry.Json, "name"));
				bOk = ApplyMetaData(Entry.Struct, *Entry.Json);
				if (bOk && !Entry.bNative)
				{
					if (const FJson* SuperPath = Member(*Entry.Json, "super"))
					{
						UScriptStruct* Super = (UScriptStruct*)FindType(*SuperPath, UScriptStruct::StaticClass());
						if (Super)
						{
							if (int32* Index = StructIndex.Find(Super))
							{
								bOk = LinkStruct(Structs[*Index]);
							}
							Entry.Struct->SetSuperStruct(Super);
						}
						bOk = bOk && Super != nullptr;
					}
					if (bOk)
					{
						if (const FJson* Flags = GetArray(*Entry.Json, "flags"))
						{
							for (const FJson& Flag : Flags->GetArray())
							{
								EStructFlags Value;
								if (!Flag.IsString() || !FindStructFlag(Flag.GetString(), Value))
								{
									bOk = Fail(FString::Printf(TEXT("unknown struct flag '%s'"), Flag.IsString() ? *ToFString(Flag) : TEXT("?")));
									break;
								}
								Entry.Struct->StructFlags = (EStructFlags)(Entry.Struct->StructFlags | Value);
							}
						}
						bOk = bOk && Error.IsEmpty();
					}
					if (bOk)
					{
						if (const FJson* Properties = GetArray(*Entry.Json, "properties"))
						{
							const auto& Array = Properties->GetArray();
							for (rapidjson::SizeType Index = Array.Size(); bOk && Index-- > 0;)
							{
								const FJson& Json = Array[Index];
								FEntryScope PropertyScope(*this, "property", Member(Json, "name"));
								EPropertyFlags Flags;
								bool bSkipped = false;
								bOk = GetString(Json, "name", true) && ReadFlags(Json, Flags);
								FProperty* Property = bOk ? CreateProperty(Entry.Struct, Intern(*Member(Json, "name")), Json, Flags, bSkipped) : nullptr;
								if (Property)
								{
									Entry.Struct->AddCppProperty(Property);
									bOk = ApplyMetaData(Property, Json);
									++Stats.NumProperties;
								}
								else
								{
									bOk = bOk && bSkipped && Error.IsEmpty();
								}
							}
						}
						bOk = bOk && Error.IsEmpty();
					}
					if (bOk)
					{
						Entry.Struct->StaticLink(true);
					}
				}
			}
			ScopeModule = SavedModule;
			Scope = SavedScope;
			Entry.State = 2;
			return bOk;
		}

		bool FCatalogueLoader::CreateDelegates(FModuleDocument& Module)
		{
			for (const FJson& Json : Member(Module.Document, "delegates")->GetArray())
			{
				FEntryScope EntryScope(*this, "delegate", Member(Json, "name"));
				const char* Name = GetString(Json, "name", true);
				if (!Name)
				{
					return false;
				}
				UObject* Outer = Module.Package;
				if (Member(Json, "outer"))
				{
					Outer = FindClassMember(Json, "outer", true);
					if (!Outer)
					{
						return false;
					}
				}
				const FJson* Sparse = Member(Json, "sparse");
				UClass* FunctionClass = Sparse ? USparseDelegateFunction::StaticClass() : UDelegateFunction::StaticClass();
				bool bSkipped = false;
				UFunction* Signature = CreateFunction(Outer, Json, FunctionClass, bSkipped);
				if (!Signature)
				{
					return bSkipped ? Fail(TEXT("a delegate parameter has a kind this program cannot represent")) : false;
				}
				if (Sparse)
				{
					const char* Owner = GetString(*Sparse, "owner", true);
					const char* Property = GetString(*Sparse, "property", true);
					if (!Owner || !Property)
					{
						return false;
					}
					USparseDelegateFunction* SparseSignature = (USparseDelegateFunction*)Signature;
					SparseSignature->OwningClassName = FName(Owner);
					SparseSignature->DelegateName = FName(Property);
				}
				// A delegate type declared inside a class is one of the class's functions, as the engine lists it.
				if (UClass* OwnerClass = Cast<UClass>(Outer))
				{
					OwnerClass->AddFunctionToFunctionMap(Signature, Signature->GetFName());
					Signature->Next = OwnerClass->Children;
					OwnerClass->Children = Signature;
				}
				TypesByPath.Add(Signature->GetPathName(), Signature);
				RecordType(Signature, Json);
				++Stats.NumDelegates;
			}
			return true;
		}

		bool FCatalogueLoader::FillClass(FClassEntry& Entry)
		{
			ScopeModule = Entry.Module->ModuleName;
			FEntryScope EntryScope(*this, "class", Member(*Entry.Json, "name"));
			UClass* Class = Entry.Class;
			if (!ApplyMetaData(Class, *Entry.Json))
			{
				return false;
			}
			// A native class keeps its own members; data properties are only added where no C++
			// subclass could have members at the same place.
			const bool bMayAddProperties = !Entry.bNative || !NativeSuperClasses.Contains(Class);
			bool bAddedProperties = false;
			bool bAddedMembers = false;
			if (const FJson* Properties = GetArray(*Entry.Json, "properties"))
			{
				const auto& Array = Properties->GetArray();
				for (rapidjson::SizeType Index = Array.Size(); Index-- > 0;)
				{
					const FJson& Json = Array[Index];
					FEntryScope PropertyScope(*this, "property", Member(Json, "name"));
					EPropertyFlags Flags;
					if (!GetString(Json, "name", true) || !ReadFlags(Json, Flags))
					{
						return false;
					}
					const FName Name = Intern(*Member(Json, "name"));
					if (Entry.bNative && (Class->FindPropertyByName(Name) || !bMayAddProperties))
					{
						continue;
					}
					bool bSkipped = false;
					FProperty* Property = CreateProperty(Class, Name, Json, Flags, bSkipped);
					if (!Property)
					{
						if (bSkipped && Error.IsEmpty())
						{
							continue;
						}
						return false;
					}
					Class->AddCppProperty(Property);
					if (!ApplyMetaData(Property, Json))
					{
						return false;
					}
					bAddedProperties = true;
					bAddedMembers = true;
					++Stats.NumProperties;
				}
			}
			else if (!Error.IsEmpty())
			{
				return false;
			}
			if (const FJson* Functions = GetArray(*Entry.Json, "functions"))
			{
				const auto& Array = Functions->GetArray();
				// The class's Children list prepends too: add the last function first.
				for (rapidjson::SizeType Index = Array.Size(); Index-- > 0;)
				{
					const FJson& Json = Array[Index];
					FEntryScope FunctionScope(*this, "function", Member(Json, "name"));
					const FJson* NameValue = Member(Json, "name");
					if (!NameValue || !NameValue->IsString())
					{
						return Fail(TEXT("a function needs a 'name'"));
					}
					const FName Name = Intern(*NameValue);
					if (Entry.bNative && Class->FindFunctionByName(Name, EIncludeSuperFlag::ExcludeSuper))
					{
						continue;
					}
					bool bSkipped = false;
					UFunction* Function = CreateFunction(Class, Json, UFunction::StaticClass(), bSkipped);
					if (!Function)
					{
						if (bSkipped && Error.IsEmpty())
						{
							++Stats.NumSkippedFunctions;
							continue;
						}
						return false;
					}
					if (UClass* Super = Class->GetSuperClass())
					{
						if (UFunction* Overridden = Super->FindFunctionByName(Name))
						{
							Function->SetSuperStruct(Overridden);
						}
					}
					Class->AddFunctionToFunctionMap(Function, Name);
					Function->Next = Class->Children;
					Class->Children = Function;
					bAddedMembers = true;
					++Stats.NumFunctions;
				}
			}
			else if (!Error.IsEmpty())
			{
				return false;
			}
			if (!Entry.bNative)
			{
				Class->Bind();
				Class->StaticLink(true);
			}
			else if (bAddedProperties)
			{
				Class->StaticLink(true);
			}
			if (Entry.bNative && bAddedMembers)
			{
				// A C++ class the catalogue completed counts as one of its types.
				RecordType(Class, *Entry.Json);
			}
			return true;
		}

		bool FCatalogueLoader::ApplyClassDefaults(FClassEntry& Entry)
		{
			const FJson* Properties = Member(*Entry.Json, "properties");
			if (!Properties || !Properties->IsArray())
			{
				return true;
			}
			UObject* Defaults = nullptr;
			for (const FJson& Json : Properties->GetArray())
			{
				const FJson* Default = Member(Json, "default");
				if (!Default)
				{
					continue;
				}
				ScopeModule = Entry.Module->ModuleName;
				FEntryScope EntryScope(*this, "class", Member(*Entry.Json, "name"));
				FEntryScope PropertyScope(*this, "property", Member(Json, "name"));
				if (!Default->IsString())
				{
					return Fail(TEXT("'default' must be a string"));
				}
				FProperty* Property = Entry.Class->FindPropertyByName(ToFName(*Member(Json, "name")));
				if (!Property || Property->GetOwner<UClass>() != Entry.Class)
				{
					continue; // a native class's own member keeps its C++ initial value
				}
				if (!Defaults)
				{
					Defaults = Entry.Class->GetDefaultObject();
				}
				const FString Text = ToFString(*Default);
				if (!Property->ImportText_InContainer(*Text, Defaults, Defaults, PPF_None))
				{
					return Fail(FString::Printf(TEXT("default '%s' does not fit the property"), *Text));
				}
			}
			return true;
		}

		bool FCatalogueLoader::Load(const FEmbeddedModule* Modules, int32 NumModules, FString& OutError)
		{
			auto Finish = [this, &OutError](bool bOk)
			{
				if (!bOk)
				{
					OutError = Error.IsEmpty() ? FString(TEXT("catalogue: registration failed")) : Error;
				}
				return bOk;
			};

			// Native classes other native classes derive from: the catalogue must not grow them.
			for (TObjectIterator<UClass> It; It; ++It)
			{
				if (UClass* Super = It->GetSuperClass())
				{
					NativeSuperClasses.Add(Super);
				}
			}

			if (!ParseModules(Modules, NumModules))
			{
				return Finish(false);
			}
			for (std::unique_ptr<FModuleDocument>& Module : Documents)
			{
				ScopeModule = Module->ModuleName;
				if (!CreateEnums(*Module) || !CreateStructShells(*Module) || !CreateClassShells(*Module))
				{
					return Finish(false);
				}
			}
			for (FClassEntry& Entry : Classes)
			{
				if (!ResolveClassReferences(Entry))
				{
					return Finish(false);
				}
			}
			for (FStructEntry& Entry : Structs)
			{
				if (!LinkStruct(Entry))
				{
					return Finish(false);
				}
			}
			for (std::unique_ptr<FModuleDocument>& Module : Documents)
			{
				ScopeModule = Module->ModuleName;
				if (!CreateDelegates(*Module))
				{
					return Finish(false);
				}
			}
			for (FClassEntry& Entry : Classes)
			{
				if (!FillClass(Entry))
				{
					return Finish(false);
				}
			}
			for (FClassEntry& Entry : Classes)
			{
				if (!ApplyClassDefaults(Entry))
				{
					return Finish(false);
				}
			}
			return Finish(true);
		}
	}

	bool LoadCatalogue(const FEmbeddedModule* Modules, int32 NumModules, FCatalogueTypeRegistry& OutRegistry,
		FCatalogueStats& OutStats, FString& OutError)
	{
		FCatalogueLoader Loader(OutRegistry, OutStats);
		return Loader.Load(Modules, NumModules, OutError);
	}
}
