/*
 * 本文件由 templates/ui_blocks/compose 生成：界面块片段库的 logic 骨架。
 * 回调命名口径：onButtonClick_控件caption（返回 false = 放行系统默认处理，true = 拦截）。
 * 编译前按项目模板补齐 include（HelloWord 模板为 #include "uart/ProtocolSender.h"）。
 * 行块的口令：整行就是一个透明 button，命中区 = 行条。
 */

/*
 * 第 2 批交互块（slider_row / progress_row / input_row / checkbox_row / radio_row /
 * list_item / wheel_picker）的运行期回调——签名出自 knowledge/uicontrols/*.md，未在骨架里
 * 展开（避免签名漂移），需要时把下面注释打开并按业务补实现：
 *
 *   static void onProgressChanged_SeekRowSliderRow1Bar(TVSeekBar *pSeekBar, int progress) {}
 *   static void onCheckedChanged_CheckRowCheckboxRow2Box(TVCheckBox *pCheckBox, bool isChecked) {}
 *   static void onCheckedChanged_RadioRowRadioRow3Group(TVRadioGroup *pGroup, int checkedID) {}
 *   static int  getListItemCount_ListListItem4(const TVListView *pListView) { return 0; }
 *   static void obtainListItemData_ListListItem4(TVListView *p, TVListView::TVListItem *item, int index) {}
 *   static void onListItemClick_ListListItem4(TVListView *p, int index, int id) {}
 *   // 滚轮：正中行回读 fi + (h/2 − off)/ih；程序化定位用数据侧平移（见 listview-wheel-picker.md）
 */

/**
 * 注册定时器（id 不能重复）
 */
static S_ACTIVITY_TIMEER REGISTER_ACTIVITY_TIMER_TAB[] = {
    //{0,  1000}, // 定时器 id=0，间隔 1 秒
};

/**
 * 界面构造时触发
 */
static void onUI_init() {
    // TODO: 页面初始化（控件文案复位 / 监听器注册）
}

/**
 * 切换到该界面时触发
 */
static void onUI_intent(const Intent *intentPtr) {
    if (intentPtr != NULL) {
        // TODO
    }
}

static void onUI_show() {
}

static void onUI_hide() {
}

static void onUI_quit() {
    // 页面销毁：清缓存 + 反注册监听器（见 knowledge/devflow/activity-code-skeleton.md）
}

static void onUI_Timer(int id) {
}

// ---- 按钮回调 ----
static bool onButtonClick_ButtonRowSettingRow2(TVButton *pButton) {
    // TODO: ButtonRowSettingRow2
    return false;
}
static bool onButtonClick_ButtonRowToggleRow3(TVButton *pButton) {
    // TODO: ButtonRowToggleRow3
    return false;
}
static bool onButtonClick_ButtonRowSettingRow4(TVButton *pButton) {
    // TODO: ButtonRowSettingRow4
    return false;
}
static bool onButtonClick_ButtonRowDeviceCard6(TVButton *pButton) {
    // TODO: ButtonRowDeviceCard6
    return false;
}
static bool onButtonClick_ButtonRowDeviceCard7(TVButton *pButton) {
    // TODO: ButtonRowDeviceCard7
    return false;
}
static bool onButtonClick_ButtonRowToggleRow10(TVButton *pButton) {
    // TODO: ButtonRowToggleRow10
    return false;
}
static bool onButtonClick_ButtonSecondary12(TVButton *pButton) {
    // TODO: ButtonSecondary12
    return false;
}
static bool onButtonClick_ButtonPrimary12(TVButton *pButton) {
    // TODO: ButtonPrimary12
    return false;
}
