// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// The body of the extension, the same for every version of the shell: the entry for the version precedes it in
// the installed extension.js, and has the imports.

const BUS_NAME = 'com.burnwick.Burnwick.StatusTitle';
const OBJECT_PATH = '/com/burnwick/Burnwick/StatusTitle';
const INTERFACE = 'com.burnwick.Burnwick.StatusTitle1';
const EXTENSION_NAME = 'com.burnwick.Burnwick.ShellExtension';
const FONT_WEIGHTS = {regular: 400, semibold: 600, heavy: 800};
const HOVER_DELAY = 350; // ms
const GAP = 6; // logical pixels between the bar and the popup

/** A box whose children are below each other; St's property for that differs between the versions. */
function column(styleClass) {
    const box = new St.BoxLayout({style_class: styleClass});
    box.layout_manager.orientation = Clutter.Orientation.VERTICAL;
    return box;
}

function row(...children) {
    const box = new St.BoxLayout({x_expand: true});
    children.forEach(child => box.add_child(child));
    return box;
}

/** The opacity of text that matters less; in high contrast all of it is opaque. */
function faint(share) {
    return St.Settings.get().high_contrast ? 255 : Math.round(255 * share);
}

function label(text, styleClass = '', properties = {}) {
    return new St.Label({text, style_class: styleClass, y_align: Clutter.ActorAlign.CENTER, ...properties});
}

/** "resets in 3h 5m"; empty without an instant. The program formats it in the same way. */
function resetText(resetsAt) {
    if (resetsAt === 0)
        return '';
    const minutes = Math.floor((resetsAt - Date.now() / 1000) / 60);
    const hours = Math.floor(minutes / 60);
    if (minutes < 0)
        return 'resets now';
    if (hours >= 48)
        return `resets in ${Math.floor(hours / 24)}d ${hours % 24}h`;
    return `resets in ${hours > 0 ? `${hours}h ` : ''}${minutes % 60}m`;
}

/** The title in the top bar, and its popup, from the properties that the program has on the session bus. */
class StatusTitle {
    constructor() {
        this._connections = []; // [object, identifier]
        this._cancellable = new Gio.Cancellable();
        this._ownedName = Gio.DBus.session.own_name(EXTENSION_NAME, Gio.BusNameOwnerFlags.NONE, null, null);
        this._addButton();
        this._popup = column('popup-menu-content burnwick-popup');
        this._popup.visible = false;
        Main.uiGroup.add_child(this._popup);
        this._connect(Main.sessionMode, 'updated', () => this._update());
        this._connect(St.Settings.get(), 'notify::high-contrast', () => this._update());
        // It follows the name's owner, and reads the properties of each one before it announces it.
        Gio.DBusProxy.new(Gio.DBus.session, Gio.DBusProxyFlags.DO_NOT_AUTO_START, null, BUS_NAME, OBJECT_PATH,
            INTERFACE, this._cancellable, (source, result) => this._takeProxy(result));
    }

    destroy() {
        this._cancellable.cancel();
        this._hidePopup();
        this._connections.forEach(([object, identifier]) => object.disconnect(identifier));
        Gio.DBus.session.unown_name(this._ownedName);
        this._popup.destroy();
        this._button.destroy();
    }

    _connect(object, signal, handler) {
        this._connections.push([object, object.connect(signal, handler)]);
    }

    _addButton() {
        this._button = new PanelMenu.Button(0.5, 'Burnwick', true);
        this._button.visible = false;
        this._segments = new St.BoxLayout({y_align: Clutter.ActorAlign.CENTER});
        this._button.add_child(
            row(new St.Icon({icon_name: 'burnwick-symbolic', style_class: 'system-status-icon'}), this._segments));
        this._connect(this._button, 'event', (actor, event) => this._onEvent(event));
        this._connect(this._button, 'notify::hover', () => this._onHover());
        Main.panel.addToStatusArea('burnwick', this._button);
    }

    _takeProxy(result) {
        try {
            this._proxy = Gio.DBusProxy.new_finish(result);
        } catch (error) {
            if (!error.matches(Gio.IOErrorEnum, Gio.IOErrorEnum.CANCELLED))
                logError(error, 'Burnwick');
            return;
        }
        this._connect(this._proxy, 'g-properties-changed', () => this._update());
        this._connect(this._proxy, 'notify::g-name-owner', () => this._update());
        this._update();
    }

    /** The property's value; undefined while the program is not running. */
    _read(property) {
        const value = this._proxy?.g_name_owner ? this._proxy.get_cached_property(property) : null;
        return value?.recursiveUnpack();
    }

    _update() {
        const title = this._read('Title');
        // The lock screen shows nobody's figures.
        this._button.visible = title !== undefined && !Main.sessionMode.isLocked;
        if (!this._button.visible)
            this._hidePopup();
        if (title === undefined)
            return;
        const labels = this._segments.get_children();
        labels.slice(title.length).forEach(surplus => surplus.destroy());
        title.forEach(([text, weight, isDimmed, color], index) => {
            const segment = labels[index] ?? new St.Label();
            if (!labels[index])
                this._segments.add_child(segment);
            segment.text = text;
            segment.style = `font-weight: ${FONT_WEIGHTS[weight] ?? 400};${color ? ` color: ${color};` : ''}`;
            segment.opacity = isDimmed ? faint(0.48) : 255;
        });
        this._button.accessible_name = this._read('Description') ?? 'Burnwick';
        if (this._popup.visible)
            this._showPopup();
    }

    _onEvent(event) {
        const type = event.type();
        const isKey = type === Clutter.EventType.KEY_PRESS &&
            [Clutter.KEY_Return, Clutter.KEY_KP_Enter, Clutter.KEY_space].includes(event.get_key_symbol());
        if (!isKey && type !== Clutter.EventType.BUTTON_PRESS && type !== Clutter.EventType.TOUCH_BEGIN)
            return Clutter.EVENT_PROPAGATE;
        this._hidePopup();
        const context = global.create_app_launch_context(event.get_time(), -1);
        const program = Gio.AppInfo.create_from_commandline('burnwick', 'Burnwick',
            Gio.AppInfoCreateFlags.SUPPORTS_STARTUP_NOTIFICATION);
        const token = context.get_startup_notify_id(program, []) ?? '';
        this._proxy.call('Activate', new GLib.Variant('(s)', [token]), Gio.DBusCallFlags.NO_AUTO_START, -1, null,
            null);
        Main.overview.hide();
        return Clutter.EVENT_STOP;
    }

    _onHover() {
        this._hidePopup();
        if (!this._button.hover)
            return;
        this._timeout = GLib.timeout_add(GLib.PRIORITY_DEFAULT, HOVER_DELAY, () => {
            this._timeout = 0;
            this._showPopup();
            return GLib.SOURCE_REMOVE;
        });
    }

    _hidePopup() {
        if (this._timeout)
            GLib.source_remove(this._timeout);
        this._timeout = 0;
        this._popup.hide();
    }

    _showPopup() {
        this._popup.destroy_all_children();
        const end = {x_expand: true, x_align: Clutter.ActorAlign.END};
        const note = {opacity: faint(0.65)};
        this._popup.add_child(row(
            new St.Icon({icon_name: 'burnwick', style_class: 'burnwick-icon'}),
            label('Burnwick', 'burnwick-name'),
            label(this._read('Summary') ?? '', 'burnwick-note', {...end, ...note})));
        for (const [name, percent, color, resetsAt] of this._read('Limits') ?? []) {
            const limit = column('burnwick-limit');
            limit.add_child(row(label(name), label(`${Math.round(percent)}%`, 'burnwick-percent', end),
                label(resetText(resetsAt), 'burnwick-note', note)));
            const style = `width: ${0.216 * Math.min(percent, 100)}em; background-color: ${color};`;
            const track = row(new St.Widget({style_class: 'burnwick-bar', style}));
            track.style_class = 'burnwick-track';
            limit.add_child(track);
            this._popup.add_child(limit);
        }
        (this._read('Remarks') ?? []).forEach((remark, index) => this._popup.add_child(
            label(remark, index === 0 ? 'burnwick-remark burnwick-line' : 'burnwick-remark')));
        this._popup.show();
        this._placePopup();
    }

    /** Below the title, centred, within its monitor. */
    _placePopup() {
        const monitor = Main.layoutManager.findMonitorForActor(this._button) ?? Main.layoutManager.primaryMonitor;
        const gap = GAP * St.ThemeContext.get_for_stage(global.stage).scale_factor;
        const [x, y] = this._button.get_transformed_position();
        const [width, height] = this._button.get_transformed_size();
        const popupWidth = this._popup.get_preferred_width(-1)[1];
        const centred = x + (width - popupWidth) / 2;
        const last = monitor.x + monitor.width - popupWidth - gap;
        this._popup.set_position(Math.round(Math.max(monitor.x + gap, Math.min(centred, last))),
            Math.round(y + height + gap));
        Main.uiGroup.set_child_above_sibling(this._popup, null);
    }
}
