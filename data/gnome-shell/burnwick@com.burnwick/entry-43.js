// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// The entry for GNOME Shell 43 and 44.
/* exported init */

const {Clutter, Gio, GLib, St} = imports.gi;
const Main = imports.ui.main;
const PanelMenu = imports.ui.panelMenu;

function init() {
    let title = null;
    return {
        enable() {
            title = new StatusTitle();
        },
        disable() {
            title.destroy();
            title = null;
        },
    };
}
