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
static bool onButtonClick_Toolbar1Back(TVButton *pButton) {
    // TODO: Toolbar1Back
    return false;
}
static bool onButtonClick_Toolbar1Action3(TVButton *pButton) {
    // TODO: Toolbar1Action3
    return false;
}
static bool onButtonClick_Toolbar1Action2(TVButton *pButton) {
    // TODO: Toolbar1Action2
    return false;
}
static bool onButtonClick_Toolbar1Action1(TVButton *pButton) {
    // TODO: Toolbar1Action1
    return false;
}
static bool onButtonClick_ButtonRowSettingRow4(TVButton *pButton) {
    // TODO: ButtonRowSettingRow4
    return false;
}
static bool onButtonClick_ButtonRowIconRow5(TVButton *pButton) {
    // TODO: ButtonRowIconRow5
    return false;
}
static bool onButtonClick_ButtonRowToggleRow6(TVButton *pButton) {
    // TODO: ButtonRowToggleRow6
    return false;
}
static bool onButtonClick_ButtonRowDeviceCard7(TVButton *pButton) {
    // TODO: ButtonRowDeviceCard7
    return false;
}
static bool onButtonClick_ButtonRowTimeRow8(TVButton *pButton) {
    // TODO: ButtonRowTimeRow8
    return false;
}
static bool onButtonClick_ButtonRowSettingRow9(TVButton *pButton) {
    // TODO: ButtonRowSettingRow9
    return false;
}
static bool onButtonClick_ButtonRowIconRow11(TVButton *pButton) {
    // TODO: ButtonRowIconRow11
    return false;
}
static bool onButtonClick_ButtonRowToggleRow12(TVButton *pButton) {
    // TODO: ButtonRowToggleRow12
    return false;
}
static bool onButtonClick_ButtonRowDeviceCard13(TVButton *pButton) {
    // TODO: ButtonRowDeviceCard13
    return false;
}
static bool onButtonClick_ButtonRowTimeRow14(TVButton *pButton) {
    // TODO: ButtonRowTimeRow14
    return false;
}
static bool onButtonClick_ButtonRowSettingRow15(TVButton *pButton) {
    // TODO: ButtonRowSettingRow15
    return false;
}
static bool onButtonClick_ButtonRowIconRow16(TVButton *pButton) {
    // TODO: ButtonRowIconRow16
    return false;
}
static bool onButtonClick_ButtonRowToggleRow18(TVButton *pButton) {
    // TODO: ButtonRowToggleRow18
    return false;
}
static bool onButtonClick_ButtonRowDeviceCard19(TVButton *pButton) {
    // TODO: ButtonRowDeviceCard19
    return false;
}
static bool onButtonClick_ButtonRowTimeRow20(TVButton *pButton) {
    // TODO: ButtonRowTimeRow20
    return false;
}
static bool onButtonClick_ButtonRowSettingRow21(TVButton *pButton) {
    // TODO: ButtonRowSettingRow21
    return false;
}
static bool onButtonClick_ButtonRowIconRow22(TVButton *pButton) {
    // TODO: ButtonRowIconRow22
    return false;
}
static bool onButtonClick_ButtonRowToggleRow23(TVButton *pButton) {
    // TODO: ButtonRowToggleRow23
    return false;
}
static bool onButtonClick_ButtonRowDeviceCard25(TVButton *pButton) {
    // TODO: ButtonRowDeviceCard25
    return false;
}
static bool onButtonClick_ButtonRowTimeRow26(TVButton *pButton) {
    // TODO: ButtonRowTimeRow26
    return false;
}
static bool onButtonClick_ButtonRowSettingRow27(TVButton *pButton) {
    // TODO: ButtonRowSettingRow27
    return false;
}
static bool onButtonClick_ButtonRowIconRow28(TVButton *pButton) {
    // TODO: ButtonRowIconRow28
    return false;
}
static bool onButtonClick_ButtonRowToggleRow29(TVButton *pButton) {
    // TODO: ButtonRowToggleRow29
    return false;
}
static bool onButtonClick_ButtonRowDeviceCard30(TVButton *pButton) {
    // TODO: ButtonRowDeviceCard30
    return false;
}
static bool onButtonClick_ButtonRowTimeRow32(TVButton *pButton) {
    // TODO: ButtonRowTimeRow32
    return false;
}
static bool onButtonClick_ButtonRowSettingRow33(TVButton *pButton) {
    // TODO: ButtonRowSettingRow33
    return false;
}
static bool onButtonClick_ButtonRowIconRow34(TVButton *pButton) {
    // TODO: ButtonRowIconRow34
    return false;
}
static bool onButtonClick_ButtonRowToggleRow35(TVButton *pButton) {
    // TODO: ButtonRowToggleRow35
    return false;
}
static bool onButtonClick_ButtonRowDeviceCard36(TVButton *pButton) {
    // TODO: ButtonRowDeviceCard36
    return false;
}
static bool onButtonClick_ButtonRowTimeRow37(TVButton *pButton) {
    // TODO: ButtonRowTimeRow37
    return false;
}
static bool onButtonClick_ButtonRowSettingRow39(TVButton *pButton) {
    // TODO: ButtonRowSettingRow39
    return false;
}
static bool onButtonClick_ButtonRowIconRow40(TVButton *pButton) {
    // TODO: ButtonRowIconRow40
    return false;
}
static bool onButtonClick_ButtonRowToggleRow41(TVButton *pButton) {
    // TODO: ButtonRowToggleRow41
    return false;
}
static bool onButtonClick_ButtonRowDeviceCard42(TVButton *pButton) {
    // TODO: ButtonRowDeviceCard42
    return false;
}
static bool onButtonClick_ButtonRowTimeRow43(TVButton *pButton) {
    // TODO: ButtonRowTimeRow43
    return false;
}
static bool onButtonClick_ButtonRowSettingRow44(TVButton *pButton) {
    // TODO: ButtonRowSettingRow44
    return false;
}
static bool onButtonClick_ButtonRowIconRow46(TVButton *pButton) {
    // TODO: ButtonRowIconRow46
    return false;
}
static bool onButtonClick_ButtonRowToggleRow47(TVButton *pButton) {
    // TODO: ButtonRowToggleRow47
    return false;
}
static bool onButtonClick_ButtonRowDeviceCard48(TVButton *pButton) {
    // TODO: ButtonRowDeviceCard48
    return false;
}
static bool onButtonClick_ButtonRowTimeRow49(TVButton *pButton) {
    // TODO: ButtonRowTimeRow49
    return false;
}
static bool onButtonClick_ButtonRowSettingRow50(TVButton *pButton) {
    // TODO: ButtonRowSettingRow50
    return false;
}
static bool onButtonClick_ButtonRowIconRow51(TVButton *pButton) {
    // TODO: ButtonRowIconRow51
    return false;
}
static bool onButtonClick_ButtonRowToggleRow53(TVButton *pButton) {
    // TODO: ButtonRowToggleRow53
    return false;
}
static bool onButtonClick_ButtonRowDeviceCard54(TVButton *pButton) {
    // TODO: ButtonRowDeviceCard54
    return false;
}
static bool onButtonClick_ButtonRowTimeRow55(TVButton *pButton) {
    // TODO: ButtonRowTimeRow55
    return false;
}
static bool onButtonClick_ButtonRowSettingRow56(TVButton *pButton) {
    // TODO: ButtonRowSettingRow56
    return false;
}
static bool onButtonClick_ButtonRowIconRow57(TVButton *pButton) {
    // TODO: ButtonRowIconRow57
    return false;
}
static bool onButtonClick_ButtonRowToggleRow58(TVButton *pButton) {
    // TODO: ButtonRowToggleRow58
    return false;
}
static bool onButtonClick_Tabs69Item1(TVButton *pButton) {
    // TODO: Tabs69Item1
    return false;
}
static bool onButtonClick_Tabs69Item2(TVButton *pButton) {
    // TODO: Tabs69Item2
    return false;
}
static bool onButtonClick_Tabs69Item3(TVButton *pButton) {
    // TODO: Tabs69Item3
    return false;
}
static bool onButtonClick_Tabs69Item4(TVButton *pButton) {
    // TODO: Tabs69Item4
    return false;
}
static bool onButtonClick_Tabs70Item1(TVButton *pButton) {
    // TODO: Tabs70Item1
    return false;
}
static bool onButtonClick_Tabs70Item2(TVButton *pButton) {
    // TODO: Tabs70Item2
    return false;
}
static bool onButtonClick_Tabs70Item3(TVButton *pButton) {
    // TODO: Tabs70Item3
    return false;
}
static bool onButtonClick_Tabs70Item4(TVButton *pButton) {
    // TODO: Tabs70Item4
    return false;
}
static bool onButtonClick_Tabs71Item1(TVButton *pButton) {
    // TODO: Tabs71Item1
    return false;
}
static bool onButtonClick_Tabs71Item2(TVButton *pButton) {
    // TODO: Tabs71Item2
    return false;
}
static bool onButtonClick_Tabs71Item3(TVButton *pButton) {
    // TODO: Tabs71Item3
    return false;
}
static bool onButtonClick_Tabs71Item4(TVButton *pButton) {
    // TODO: Tabs71Item4
    return false;
}
static bool onButtonClick_Banner72Close(TVButton *pButton) {
    // TODO: Banner72Close
    return false;
}
static bool onButtonClick_Banner75Close(TVButton *pButton) {
    // TODO: Banner75Close
    return false;
}
static bool onButtonClick_Banner78Close(TVButton *pButton) {
    // TODO: Banner78Close
    return false;
}
static bool onButtonClick_Banner81Close(TVButton *pButton) {
    // TODO: Banner81Close
    return false;
}
static bool onButtonClick_Banner84Close(TVButton *pButton) {
    // TODO: Banner84Close
    return false;
}
static bool onButtonClick_Banner87Close(TVButton *pButton) {
    // TODO: Banner87Close
    return false;
}
static bool onButtonClick_GridIcons91Cell1(TVButton *pButton) {
    // TODO: GridIcons91Cell1
    return false;
}
static bool onButtonClick_GridIcons91Cell2(TVButton *pButton) {
    // TODO: GridIcons91Cell2
    return false;
}
static bool onButtonClick_GridIcons91Cell3(TVButton *pButton) {
    // TODO: GridIcons91Cell3
    return false;
}
static bool onButtonClick_GridIcons91Cell4(TVButton *pButton) {
    // TODO: GridIcons91Cell4
    return false;
}
static bool onButtonClick_GridIcons91Cell5(TVButton *pButton) {
    // TODO: GridIcons91Cell5
    return false;
}
static bool onButtonClick_GridIcons91Cell6(TVButton *pButton) {
    // TODO: GridIcons91Cell6
    return false;
}
static bool onButtonClick_GridIcons91Cell7(TVButton *pButton) {
    // TODO: GridIcons91Cell7
    return false;
}
static bool onButtonClick_GridIcons91Cell8(TVButton *pButton) {
    // TODO: GridIcons91Cell8
    return false;
}
static bool onButtonClick_ImageGallery92Thumb1(TVButton *pButton) {
    // TODO: ImageGallery92Thumb1
    return false;
}
static bool onButtonClick_ImageGallery92Thumb2(TVButton *pButton) {
    // TODO: ImageGallery92Thumb2
    return false;
}
static bool onButtonClick_ImageGallery92Thumb3(TVButton *pButton) {
    // TODO: ImageGallery92Thumb3
    return false;
}
static bool onButtonClick_ImageGallery92Thumb4(TVButton *pButton) {
    // TODO: ImageGallery92Thumb4
    return false;
}
static bool onButtonClick_ImageGallery92Thumb5(TVButton *pButton) {
    // TODO: ImageGallery92Thumb5
    return false;
}
static bool onButtonClick_ImageGallery92Thumb6(TVButton *pButton) {
    // TODO: ImageGallery92Thumb6
    return false;
}
static bool onButtonClick_ImageGallery92Thumb7(TVButton *pButton) {
    // TODO: ImageGallery92Thumb7
    return false;
}
static bool onButtonClick_ImageGallery92Thumb8(TVButton *pButton) {
    // TODO: ImageGallery92Thumb8
    return false;
}
static bool onButtonClick_Keypad93Key1(TVButton *pButton) {
    // TODO: Keypad93Key1
    return false;
}
static bool onButtonClick_Keypad93Key2(TVButton *pButton) {
    // TODO: Keypad93Key2
    return false;
}
static bool onButtonClick_Keypad93Key3(TVButton *pButton) {
    // TODO: Keypad93Key3
    return false;
}
static bool onButtonClick_Keypad93Key4(TVButton *pButton) {
    // TODO: Keypad93Key4
    return false;
}
static bool onButtonClick_Keypad93Key5(TVButton *pButton) {
    // TODO: Keypad93Key5
    return false;
}
static bool onButtonClick_Keypad93Key6(TVButton *pButton) {
    // TODO: Keypad93Key6
    return false;
}
static bool onButtonClick_Keypad93Key7(TVButton *pButton) {
    // TODO: Keypad93Key7
    return false;
}
static bool onButtonClick_Keypad93Key8(TVButton *pButton) {
    // TODO: Keypad93Key8
    return false;
}
static bool onButtonClick_Keypad93Key9(TVButton *pButton) {
    // TODO: Keypad93Key9
    return false;
}
static bool onButtonClick_Keypad93Key10(TVButton *pButton) {
    // TODO: Keypad93Key10
    return false;
}
static bool onButtonClick_Keypad93Key11(TVButton *pButton) {
    // TODO: Keypad93Key11
    return false;
}
static bool onButtonClick_Keypad93Key12(TVButton *pButton) {
    // TODO: Keypad93Key12
    return false;
}
static bool onButtonClick_Nav2Item1(TVButton *pButton) {
    // TODO: Nav2Item1
    return false;
}
static bool onButtonClick_Nav2Item2(TVButton *pButton) {
    // TODO: Nav2Item2
    return false;
}
static bool onButtonClick_Nav2Item3(TVButton *pButton) {
    // TODO: Nav2Item3
    return false;
}
static bool onButtonClick_Nav2Item4(TVButton *pButton) {
    // TODO: Nav2Item4
    return false;
}
static bool onButtonClick_Nav2Item5(TVButton *pButton) {
    // TODO: Nav2Item5
    return false;
}
static bool onButtonClick_ButtonSecondary103(TVButton *pButton) {
    // TODO: ButtonSecondary103
    return false;
}
static bool onButtonClick_ButtonPrimary103(TVButton *pButton) {
    // TODO: ButtonPrimary103
    return false;
}
static bool onButtonClick_DialogButtonSecondary98(TVButton *pButton) {
    // TODO: DialogButtonSecondary98
    return false;
}
static bool onButtonClick_DialogButtonPrimary98(TVButton *pButton) {
    // TODO: DialogButtonPrimary98
    return false;
}
static bool onButtonClick_DialogButtonSecondary99(TVButton *pButton) {
    // TODO: DialogButtonSecondary99
    return false;
}
static bool onButtonClick_DialogButtonPrimary99(TVButton *pButton) {
    // TODO: DialogButtonPrimary99
    return false;
}
static bool onButtonClick_DialogButtonSecondary100(TVButton *pButton) {
    // TODO: DialogButtonSecondary100
    return false;
}
static bool onButtonClick_DialogButtonPrimary100(TVButton *pButton) {
    // TODO: DialogButtonPrimary100
    return false;
}

// ---- 输入框回调（check_all #5 核对：edittext 必须有 onEditTextChanged_<caption>）----
static void onEditTextChanged_EditRowInputRow62Box(const std::string &text) {
    // TODO: EditRowInputRow62Box 输入内容 = text
}
