# To be sourced: what jni/Android.mk says, evaluated by make with stand-ins for the variables and functions of ndk-build.

# ndk_modules SOURCE: a line "MODULE KIND VARIABLE value..." for each variable of each module, KIND static or shared;
# and "application - VARIABLE value..." for those of Application.mk.
ndk_modules() (
    stand_ins=$(mktemp -d)
    trap 'rm -rf "$stand_ins"' EXIT
    {
        echo 'my-dir = $(patsubst %/,%,$(dir $(lastword $(MAKEFILE_LIST))))'
        echo "CLEAR_VARS := $stand_ins/clear.mk"
        echo "BUILD_STATIC_LIBRARY := $stand_ins/static.mk"
        echo "BUILD_SHARED_LIBRARY := $stand_ins/shared.mk"
        echo "include $1/jni/Application.mk $1/jni/Android.mk"
        echo '$(foreach v,$(filter APP_%,$(.VARIABLES)),$(info application - $(v) $($(v))))'
        echo 'all: ;'
    } > "$stand_ins/ndk.mk"
    # LOCAL_PATH is the file's and stays.
    echo '$(foreach v,$(filter-out LOCAL_PATH,$(filter LOCAL_%,$(.VARIABLES))),$(eval $(v) :=))' > "$stand_ins/clear.mk"
    for kind in static shared; do
        echo '$(foreach v,$(filter LOCAL_%,$(.VARIABLES)),$(info $(LOCAL_MODULE) '$kind' $(v) $($(v))))' \
            > "$stand_ins/$kind.mk"
    done
    make --no-print-directory -s -f "$stand_ins/ndk.mk"
)
