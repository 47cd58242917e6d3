# SPDX-License-Identifier: BSD-3-Clause
moodsetctl completion fish | source
