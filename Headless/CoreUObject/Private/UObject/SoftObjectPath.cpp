#include "UObject/SoftObjectPath.h"
#include "UObject/SoftObjectPtr.h"
#include "UObject/TopLevelAssetPath.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "PropertyHelper.h"
#include "ObjectRegistry.h"

using namespace UE::CoreUObject::Private;

namespace
{
	/** "Class'/Path.Obj'" -> "/Path.Obj"; a quoted "\"...\"" loses its quotes; other text is unchanged. */
	FString ExportTextPathToObjectPath(const FString& InPath)
	{
		FString Path = InPath;
		if (Path.Len() >= 2 && Path[0] == TEXT('"') && Path[Path.Len() - 1] == TEXT('"'))
		{
			Path = Path.Mid(1, Path.Len() - 2);
		}
		int32 QuoteIndex = INDEX_NONE;
		if (Path.FindChar(TEXT('\''), QuoteIndex) && Path.Len() >= 2 && Path[Path.Len() - 1] == TEXT('\'') && QuoteIndex < Path.Len() - 1)
		{
			Path = Path.Mid(QuoteIndex + 1, Path.Len() - QuoteIndex - 2);
		}
		return Path;
	}

	bool ExportPathText(FString& ValueStr, const FString& Path, int32 PortFlags)
	{
		if (PortFlags & PPF_ExportCpp)
		{
			ValueStr += FString::Printf(TEXT("FSoftObjectPath(TEXT(\"%s\"))"), *Path.ReplaceCharWithEscapedChar());
		}
		else if (PortFlags & PPF_Delimited)
		{
			ValueStr += FString::Printf(TEXT("\"%s\""), *Path.ReplaceQuotesWithEscapedQuotes());
		}
		else
		{
			ValueStr += Path;
		}
		return true;
	}

	/** Reads a path token (quoted, dotted, or "Class'Path'"), advancing Buffer. */
	bool ImportPathToken(const TCHAR*& Buffer, FString& OutPath)
	{
		FString Token;
		const TCHAR* After = ReadToken(Buffer, Token, true);
		if (!After)
		{
			return false;
		}
		Buffer = After;
		if (*Buffer == TEXT('\''))
		{
			// Class'Path': the path follows the class.
			Token.Reset();
			After = ReadToken(Buffer + 1, Token, true);
			if (!After || *After != TEXT('\''))
			{
				return false;
			}
			Buffer = After + 1;
		}
		OutPath = ExportTextPathToObjectPath(Token);
		return true;
	}
}

// FTopLevelAssetPath

FTopLevelAssetPath::FTopLevelAssetPath(const UObject* InObject)
{
	TrySetPath(InObject);
}

bool FTopLevelAssetPath::TrySetPath(FName InPackageName, FName InAssetName)
{
	if (InPackageName.IsNone() || !InPackageName.ToString().StartsWith(TEXT("/")))
	{
		Reset();
		return false;
	}
	PackageName = InPackageName;
	AssetName = InAssetName;
	return true;
}

bool FTopLevelAssetPath::TrySetPath(const FString& InPath)
{
	const FString Path = ExportTextPathToObjectPath(InPath.TrimStartAndEnd());
	int32 Index = INDEX_NONE;
	if (Path.IsEmpty() || Path == TEXT("None") || !Path.StartsWith(TEXT("/")) || Path.FindChar(TEXT(':'), Index))
	{
		Reset();
		return false;
	}
	int32 DotIndex = INDEX_NONE;
	if (!Path.FindChar(TEXT('.'), DotIndex))
	{
		PackageName = FName(*Path);
		AssetName = FName();
		return true;
	}
	const FString Asset = Path.RightChop(DotIndex + 1);
	if (DotIndex == 0 || Asset.IsEmpty() || Asset.FindChar(TEXT('.'), Index))
	{
		// A second '.' names a subobject, which is not a top-level asset.
		Reset();
		return false;
	}
	PackageName = FName(*Path.Left(DotIndex));
	AssetName = FName(*Asset);
	return true;
}

bool FTopLevelAssetPath::TrySetPath(const UObject* InObject)
{
	Reset();
	if (!InObject)
	{
		return false;
	}
	const UObject* Outer = InObject->GetOuter();
	if (!Outer)
	{
		return TrySetPath(InObject->GetFName(), FName());
	}
	if (Outer->GetOuter() || !Outer->IsA(UPackage::StaticClass()))
	{
		return false;
	}
	return TrySetPath(Outer->GetFName(), InObject->GetFName());
}

FString FTopLevelAssetPath::ToString() const
{
	FString Result;
	AppendString(Result);
	return Result;
}

void FTopLevelAssetPath::ToString(FString& Out) const
{
	Out.Reset();
	AppendString(Out);
}

void FTopLevelAssetPath::AppendString(FString& Out) const
{
	if (PackageName.IsNone())
	{
		return;
	}
	PackageName.AppendString(Out);
	if (!AssetName.IsNone())
	{
		Out += TEXT(".");
		AssetName.AppendString(Out);
	}
}

int32 FTopLevelAssetPath::Compare(const FTopLevelAssetPath& Other) const
{
	const int32 PackageOrder = PackageName.Compare(Other.PackageName);
	return PackageOrder != 0 ? PackageOrder : AssetName.Compare(Other.AssetName);
}

bool FTopLevelAssetPath::ExportTextItem(FString& ValueStr, const FTopLevelAssetPath& DefaultValue, UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	return ExportPathText(ValueStr, ToString(), PortFlags);
}

bool FTopLevelAssetPath::ImportTextItem(const TCHAR*& Buffer, int32 PortFlags, UObject* Parent, FOutputDevice* ErrorText)
{
	FString Path;
	const TCHAR* Cursor = Buffer;
	if (!ImportPathToken(Cursor, Path))
	{
		return false;
	}
	if (Path.IsEmpty() || Path == TEXT("None"))
	{
		Reset();
	}
	else if (!TrySetPath(Path))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("'%s' is not a top-level asset path (\"/Package/Path.AssetName\")"), *Path));
		return false;
	}
	Buffer = Cursor;
	return true;
}

// FSoftObjectPath

void FSoftObjectPath::Reset()
{
	AssetPath.Reset();
	SubPathString.Reset();
}

void FSoftObjectPath::SetPath(const FString& InPath)
{
	Reset();
	const FString Path = ExportTextPathToObjectPath(InPath.TrimStartAndEnd());
	if (Path.IsEmpty() || Path == TEXT("None") || !Path.StartsWith(TEXT("/")))
	{
		return;
	}
	// "/Pkg/Path.Asset:Sub.Deeper": the package ends at the first '.', the asset at the next '.' or ':'.
	int32 DotIndex = INDEX_NONE;
	if (!Path.FindChar(TEXT('.'), DotIndex))
	{
		int32 ColonIndex = INDEX_NONE;
		if (Path.FindChar(TEXT(':'), ColonIndex))
		{
			return;
		}
		AssetPath.TrySetPath(FName(*Path), FName());
		return;
	}
	const FString PackageName = Path.Left(DotIndex);
	FString Rest = Path.RightChop(DotIndex + 1);
	int32 AssetEnd = Rest.Len();
	for (int32 Index = 0; Index < Rest.Len(); ++Index)
	{
		if (Rest[Index] == TEXT('.') || Rest[Index] == TEXT(':'))
		{
			AssetEnd = Index;
			break;
		}
	}
	const FString AssetName = Rest.Left(AssetEnd);
	if (AssetName.IsEmpty() || !AssetPath.TrySetPath(FName(*PackageName), FName(*AssetName)))
	{
		Reset();
		return;
	}
	if (AssetEnd < Rest.Len())
	{
		SubPathString = Rest.RightChop(AssetEnd + 1);
		if (SubPathString.IsEmpty())
		{
			Reset();
		}
	}
}

void FSoftObjectPath::SetPath(const FTopLevelAssetPath& InAssetPath, const FString& InSubPathString)
{
	AssetPath = InAssetPath;
	SubPathString = AssetPath.IsValid() ? InSubPathString : FString();
}

void FSoftObjectPath::SetPath(const UObject* InObject)
{
	Reset();
	if (!InObject)
	{
		return;
	}
	SetPath(InObject->GetPathName());
}

FString FSoftObjectPath::ToString() const
{
	FString Result;
	AppendString(Result);
	return Result;
}

void FSoftObjectPath::ToString(FString& Out) const
{
	Out.Reset();
	AppendString(Out);
}

void FSoftObjectPath::AppendString(FString& Out) const
{
	if (AssetPath.IsNull())
	{
		return;
	}
	AssetPath.AppendString(Out);
	if (!SubPathString.IsEmpty())
	{
		Out += TEXT(":");
		Out += SubPathString;
	}
}

bool FSoftObjectPath::LexicalLess(const FSoftObjectPath& Other) const
{
	const int32 Order = AssetPath.Compare(Other.AssetPath);
	return Order != 0 ? Order < 0 : SubPathString.Compare(Other.SubPathString, ESearchCase::IgnoreCase) < 0;
}

UObject* FSoftObjectPath::ResolveObject() const
{
	if (IsNull())
	{
		return nullptr;
	}
	if (IsPackage())
	{
		return StaticFindObjectFast(UPackage::StaticClass(), nullptr, AssetPath.GetPackageName());
	}
	return StaticFindObject(UObject::StaticClass(), nullptr, *ToString());
}

UObject* FSoftObjectPath::TryLoad() const
{
	if (IsNull())
	{
		return nullptr;
	}
	if (UObject* Found = ResolveObject())
	{
		return Found;
	}
	if (IsPackage())
	{
		return LoadPackage(nullptr, *GetLongPackageName(), LOAD_NoWarn);
	}
	return StaticLoadObject(UObject::StaticClass(), nullptr, *ToString(), nullptr, LOAD_NoWarn);
}

bool FSoftObjectPath::ExportTextItem(FString& ValueStr, const FSoftObjectPath& DefaultValue, UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	return ExportPathText(ValueStr, ToString(), PortFlags);
}

bool FSoftObjectPath::ImportTextItem(const TCHAR*& Buffer, int32 PortFlags, UObject* Parent, FOutputDevice* ErrorText)
{
	FString Path;
	const TCHAR* Cursor = Buffer;
	if (!ImportPathToken(Cursor, Path))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Bad object path: %s"), Buffer));
		return false;
	}
	if (Path.IsEmpty() || Path == TEXT("None"))
	{
		Reset();
	}
	else
	{
		SetPath(Path);
		if (IsNull())
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("'%s' is not an object path (\"/Package/Path.Object\")"), *Path));
			return false;
		}
	}
	Buffer = Cursor;
	return true;
}

// FSoftClassPath

FSoftClassPath::FSoftClassPath(const UClass* InClass)
	: FSoftObjectPath((const UObject*)InClass)
{
}

UClass* FSoftClassPath::ResolveClass() const
{
	UObject* Object = ResolveObject();
	return Object && Object->IsA(UClass::StaticClass()) ? (UClass*)Object : nullptr;
}

UClass* FSoftClassPath::TryLoadClassDerivedFrom(UClass* BaseClass) const
{
	UObject* Object = TryLoad();
	if (!Object || !Object->IsA(UClass::StaticClass()))
	{
		return nullptr;
	}
	UClass* Class = (UClass*)Object;
	return !BaseClass || Class->IsChildOf(BaseClass) ? Class : nullptr;
}

// FSoftObjectPtr

FSoftObjectPtr& FSoftObjectPtr::operator=(const UObject* Object)
{
	ObjectPath = FSoftObjectPath(Object);
	WeakPtr = Object;
	return *this;
}

FSoftObjectPtr& FSoftObjectPtr::operator=(const FSoftObjectPath& InPath)
{
	ObjectPath = InPath;
	WeakPtr.Reset();
	return *this;
}

UObject* FSoftObjectPtr::Get() const
{
	if (UObject* Cached = WeakPtr.Get())
	{
		// The object may have been renamed away from the path; the path decides.
		if (FSoftObjectPath(Cached) == ObjectPath)
		{
			return Cached;
		}
	}
	UObject* Found = ObjectPath.ResolveObject();
	WeakPtr = Found;
	return Found;
}

UObject* FSoftObjectPtr::LoadSynchronous() const
{
	if (UObject* Found = Get())
	{
		return Found;
	}
	UObject* Loaded = ObjectPath.TryLoad();
	WeakPtr = Loaded;
	return Loaded;
}

void FSoftObjectPtr::Reset()
{
	ObjectPath.Reset();
	WeakPtr.Reset();
}
