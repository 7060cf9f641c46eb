#!/usr/bin/env bash
# exports.sh TOOL LIBRARY: fails when the library exports a name that is not of this system, or
# lacks one that must be there. TOOL is nm for ELF, objdump for a DLL.
set -eu
tool=$1 library=$2
case $library in
  *.dll) names=$("$tool" -p "$library" | sed -n '/Ordinal\/Name Pointer/,/^$/p' | awk 'NR > 1 { print $NF }') ;;
  *) names=$("$tool" -D --defined-only --extern-only "$library" | awk '{ print $NF }') ;;
esac
plain=$(printf '%s\n' $names | c++filt)

for wanted in 'CZObject::AddInterface(char const\*)' 'ZCore::GetZFactory()' 'newZRClass(' \
  DllRegisterZModule DllUnRegisterZModule 'COIDManager::Load(' 'CPIDManager::Load(' 'UID::Load(' \
  'CZReltnColl::Clone(' 'ZReltnVisitorStatus::Isolate(' 'ZDfValueRxClass::CreateZDfValue(' \
  'ZCategoryReltnMap::Load(' 'ZParaArray::Load(' 'ZExtDataWrapper::AddExtData('; do
  grep -q "^$wanted" <<<"$plain" || { echo "missing: $wanted"; exit 1; }
done

# Our classes and functions, and what the compiler makes for them; away from Windows also the
# system functions that we supply. Sanitizers add names of their own.
ours='(CAtlException|C(O|P|OuterP)IDManager|CZ|IZ|IGe|Z[A-Z][A-Za-z]*|Ge[A-Z]|XYZ|CMT|SubID|SaveSubID|LoadSubID|[KOPCU]ID|zdm::|newZRClass|CErrorObject|CStringW|Dll(Un)?RegisterZModule|operator[^ ]*\((Ge|XYZ|zdm))'
system='(Sys[A-Z]|SafeArray|Var[A-Z]|Variant|CoTask|CLSIDFrom|StringFrom|ProgIDFrom|CharLower|Stg[A-Z]|SHCreate|CreateStream|I(Unknown|Stream|Storage|EnumSTATSTG|SequentialStream)|IID_|GUID)'
made='((non-virtual |virtual )?(thunk to )|(vtable|VTT|typeinfo|typeinfo name|construction vtable) for |guard variable for )?((unsigned )?(bool|char|int|long|short|void) )?'
foreign=$(grep -vE "^$made$ours" <<<"$plain" | grep -vE '^(_*asan|__odr_asan|__sanitizer|__start___|__stop___|_*lsan|_*ubsan|__llvm|__sancov|__gcov)' || true)
case $library in
  *.dll) ;;
  *) foreign=$(grep -vE "^$made$system" <<<"$foreign" || true) ;;
esac
if [ -n "$foreign" ]; then
  echo "exported but not of this system:"
  printf '%s\n' "$foreign"
  exit 1
fi
echo "$(wc -l <<<"$plain") names"
