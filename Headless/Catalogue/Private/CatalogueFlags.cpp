#include "CatalogueFlags.h"

#include <algorithm>
#include <cstring>
#include <vector>

// The catalogue names flags without their prefix ("Parm" for CPF_Parm); these tables are the only
// place where those names meet the values, which stay defined once, in ObjectMacros.h and Script.h.
namespace UE::Catalogue::Private
{
	namespace
	{
		template <typename TFlag>
		struct TNamedFlag
		{
			const char* Name;
			TFlag Value;
		};

#define CATALOGUE_CPF(Name) { #Name, CPF_##Name }
		const TNamedFlag<EPropertyFlags> GPropertyFlags[] = {
			CATALOGUE_CPF(Edit), CATALOGUE_CPF(ConstParm), CATALOGUE_CPF(BlueprintVisible), CATALOGUE_CPF(ExportObject),
			CATALOGUE_CPF(BlueprintReadOnly), CATALOGUE_CPF(Net), CATALOGUE_CPF(EditFixedSize), CATALOGUE_CPF(Parm),
			CATALOGUE_CPF(OutParm), CATALOGUE_CPF(ZeroConstructor), CATALOGUE_CPF(ReturnParm),
			CATALOGUE_CPF(DisableEditOnTemplate), CATALOGUE_CPF(NonNullable), CATALOGUE_CPF(Transient),
			CATALOGUE_CPF(Config), CATALOGUE_CPF(RequiredParm), CATALOGUE_CPF(DisableEditOnInstance),
			CATALOGUE_CPF(EditConst), CATALOGUE_CPF(GlobalConfig), CATALOGUE_CPF(InstancedReference),
			CATALOGUE_CPF(DuplicateTransient), CATALOGUE_CPF(SaveGame), CATALOGUE_CPF(NoClear),
			CATALOGUE_CPF(ReferenceParm), CATALOGUE_CPF(BlueprintAssignable), CATALOGUE_CPF(Deprecated),
			CATALOGUE_CPF(IsPlainOldData), CATALOGUE_CPF(RepSkip), CATALOGUE_CPF(RepNotify), CATALOGUE_CPF(Interp),
			CATALOGUE_CPF(NonTransactional), CATALOGUE_CPF(EditorOnly), CATALOGUE_CPF(NoDestructor),
			CATALOGUE_CPF(AutoWeak), CATALOGUE_CPF(ContainsInstancedReference), CATALOGUE_CPF(AssetRegistrySearchable),
			CATALOGUE_CPF(SimpleDisplay), CATALOGUE_CPF(AdvancedDisplay), CATALOGUE_CPF(Protected),
			CATALOGUE_CPF(BlueprintCallable), CATALOGUE_CPF(BlueprintAuthorityOnly), CATALOGUE_CPF(TextExportTransient),
			CATALOGUE_CPF(NonPIEDuplicateTransient), CATALOGUE_CPF(ExposeOnSpawn), CATALOGUE_CPF(PersistentInstance),
			CATALOGUE_CPF(UObjectWrapper), CATALOGUE_CPF(HasGetValueTypeHash), CATALOGUE_CPF(NativeAccessSpecifierPublic),
			CATALOGUE_CPF(NativeAccessSpecifierProtected), CATALOGUE_CPF(NativeAccessSpecifierPrivate),
			CATALOGUE_CPF(SkipSerialization), CATALOGUE_CPF(TObjectPtr),
		};
#undef CATALOGUE_CPF

#define CATALOGUE_FUNC(Name) { #Name, FUNC_##Name }
		const TNamedFlag<EFunctionFlags> GFunctionFlags[] = {
			CATALOGUE_FUNC(Final), CATALOGUE_FUNC(RequiredAPI), CATALOGUE_FUNC(BlueprintAuthorityOnly),
			CATALOGUE_FUNC(BlueprintCosmetic), CATALOGUE_FUNC(Net), CATALOGUE_FUNC(NetReliable), CATALOGUE_FUNC(NetRequest),
			CATALOGUE_FUNC(Exec), CATALOGUE_FUNC(Native), CATALOGUE_FUNC(Event), CATALOGUE_FUNC(NetResponse),
			CATALOGUE_FUNC(Static), CATALOGUE_FUNC(NetMulticast), CATALOGUE_FUNC(MulticastDelegate),
			CATALOGUE_FUNC(Public), CATALOGUE_FUNC(Private), CATALOGUE_FUNC(Protected), CATALOGUE_FUNC(Delegate),
			CATALOGUE_FUNC(NetServer), CATALOGUE_FUNC(HasOutParms), CATALOGUE_FUNC(HasDefaults), CATALOGUE_FUNC(NetClient),
			CATALOGUE_FUNC(BlueprintCallable), CATALOGUE_FUNC(BlueprintEvent), CATALOGUE_FUNC(BlueprintPure),
			CATALOGUE_FUNC(EditorOnly), CATALOGUE_FUNC(Const), CATALOGUE_FUNC(NetValidate),
		};
#undef CATALOGUE_FUNC

#define CATALOGUE_CLASS(Name) { #Name, CLASS_##Name }
		const TNamedFlag<EClassFlags> GClassFlags[] = {
			CATALOGUE_CLASS(Abstract), CATALOGUE_CLASS(DefaultConfig), CATALOGUE_CLASS(Config), CATALOGUE_CLASS(Transient),
			CATALOGUE_CLASS(Optional), CATALOGUE_CLASS(ProjectUserConfig), CATALOGUE_CLASS(Native),
			CATALOGUE_CLASS(NotPlaceable), CATALOGUE_CLASS(PerObjectConfig), CATALOGUE_CLASS(EditInlineNew),
			CATALOGUE_CLASS(CollapseCategories), CATALOGUE_CLASS(Interface), CATALOGUE_CLASS(PerPlatformConfig),
			CATALOGUE_CLASS(Const), CATALOGUE_CLASS(NeedsDeferredDependencyLoading), CATALOGUE_CLASS(MinimalAPI),
			CATALOGUE_CLASS(RequiredAPI), CATALOGUE_CLASS(DefaultToInstanced), CATALOGUE_CLASS(HasInstancedReference),
			CATALOGUE_CLASS(Hidden), CATALOGUE_CLASS(Deprecated), CATALOGUE_CLASS(HideDropDown),
			CATALOGUE_CLASS(GlobalUserConfig), CATALOGUE_CLASS(Intrinsic), CATALOGUE_CLASS(ConfigDoNotCheckDefaults),
		};
#undef CATALOGUE_CLASS

#define CATALOGUE_STRUCT(Name) { #Name, STRUCT_##Name }
		const TNamedFlag<EStructFlags> GStructFlags[] = {
			CATALOGUE_STRUCT(Native), CATALOGUE_STRUCT(NoExport), CATALOGUE_STRUCT(Atomic), CATALOGUE_STRUCT(Immutable),
			CATALOGUE_STRUCT(HasInstancedReference),
		};
#undef CATALOGUE_STRUCT

		/** A table sorted by name once, then searched by halving: the loader asks for tens of thousands of flags. */
		template <typename TFlag>
		class TFlagIndex
		{
		public:
			template <int32 N>
			explicit TFlagIndex(const TNamedFlag<TFlag> (&Table)[N])
				: Entries(Table, Table + N)
			{
				std::sort(Entries.begin(), Entries.end(), [](const TNamedFlag<TFlag>& A, const TNamedFlag<TFlag>& B) { return std::strcmp(A.Name, B.Name) < 0; });
			}

			bool Find(const char* Name, TFlag& OutFlag) const
			{
				const auto It = std::lower_bound(Entries.begin(), Entries.end(), Name,
					[](const TNamedFlag<TFlag>& Entry, const char* Key) { return std::strcmp(Entry.Name, Key) < 0; });
				if (It == Entries.end() || std::strcmp(It->Name, Name) != 0)
				{
					return false;
				}
				OutFlag = It->Value;
				return true;
			}

		private:
			std::vector<TNamedFlag<TFlag>> Entries;
		};
	}

	bool FindPropertyFlag(const char* Name, EPropertyFlags& OutFlag)
	{
		static const TFlagIndex<EPropertyFlags> Index(GPropertyFlags);
		return Index.Find(Name, OutFlag);
	}

	bool FindFunctionFlag(const char* Name, EFunctionFlags& OutFlag)
	{
		static const TFlagIndex<EFunctionFlags> Index(GFunctionFlags);
		return Index.Find(Name, OutFlag);
	}

	bool FindClassFlag(const char* Name, EClassFlags& OutFlag)
	{
		static const TFlagIndex<EClassFlags> Index(GClassFlags);
		return Index.Find(Name, OutFlag);
	}

	bool FindStructFlag(const char* Name, EStructFlags& OutFlag)
	{
		static const TFlagIndex<EStructFlags> Index(GStructFlags);
		return Index.Find(Name, OutFlag);
	}
}
